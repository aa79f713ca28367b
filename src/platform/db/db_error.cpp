#include "platform/db/db_error.h"

namespace melovane {

DbError::DbError(int number, QString text, QString statement)
    : std::runtime_error(text.toStdString())
    , m_number(number)
    , m_text(std::move(text))
    , m_statement(std::move(statement))
{}

} // namespace melovane
