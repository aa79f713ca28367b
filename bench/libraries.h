#pragma once

#include "platform/linux/linux_environment.h"

#include <QString>

#include <cstdint>

namespace melovane::bench {

/// Seed of every library that is measured.
inline constexpr std::uint64_t kSeed = 20260314;

/// Part of the names of the files that are kept: to be raised whenever the generator makes other
/// tracks, for a measurement asks an old file for the words of the new ones otherwise.
inline constexpr int kShape = 2;

/// A database with that many generated tracks; made on first use in the folder "libraries" beside
/// the running program and kept for the next run.
[[nodiscard]] QString libraryFile(int size);

/// A user who has all his files in one folder.
[[nodiscard]] EnvironmentPlaces placesBelow(const QString& folder);

} // namespace melovane::bench
