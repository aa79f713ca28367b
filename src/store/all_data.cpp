#include "store/all_data.h"

namespace melovane {

bool MlvAllData::IsUser() const
{
    return !QString(User1 + User2 + User3 + User4 + User5).isEmpty();
}

bool MlvAllData::IsMusicMatch() const
{
    return !QString(Kategorie + Situation + Stimmung + Tempo).isEmpty();
}

} // namespace melovane
