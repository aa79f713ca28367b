#pragma once

namespace melovane {

class Database;

/// Notes that the trees of folders, artists, albums and genres must be made anew: any track that
/// enters may change each of them. Part of the caller's transaction. \throws DbError
void markTrees(Database& library);

} // namespace melovane
