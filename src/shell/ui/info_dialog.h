#pragma once

#include "platform/controls/info_form.h"

namespace melovane {

/// The information window.
class InfoDialog : public InfoForm
{
public:
    void show(const InfoView& view) override;
};

} // namespace melovane
