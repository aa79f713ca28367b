#pragma once

#include "care/listed_locator.h"

#include <functional>
#include <memory>

namespace melovane {

class DBEngine;
class Files;

/// What work beside the window makes for itself, so that it shares no connection and no memory of
/// folders with the window. All may be called on any thread, and longer than the window lives.
struct BesideTools
{
    std::function<std::unique_ptr<DBEngine>()> makeEngine;
    std::function<std::unique_ptr<Files>()> makeFiles;
    FilesIn filesIn;
};

} // namespace melovane
