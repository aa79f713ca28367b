#pragma once

#include <QString>

#include <functional>

namespace melovane {

class ConfigObjects;
class GlobalSettings;
class WindowData;

/// The first hour of a library: what its first import has brought is shown at once, with three
/// hints, one behind the other, each until the user puts it away for ever.
class FirstHour
{
public:
    static constexpr int kHints = 3;

    /// All outlive the first hour.
    struct Parts
    {
        GlobalSettings& settings;
        const ConfigObjects& texts;
        WindowData& data;
        std::function<void()> showAllTracks;
        /// A hint, or none for an empty text.
        std::function<void(const QString& hint)> showHint;
    };

    explicit FirstHour(Parts parts);

    /// At the start of the program. A library that cannot be counted is no new one. \throws DbError
    void begin();

    /// The library may hold other rows than before. \throws DbError
    void libraryChanged();

    /// The user has read the hint that is shown.
    void putAway();

    /// In the language of the texts as they are now.
    void showHint();

private:
    [[nodiscard]] int present() const;
    void keep(int hint);

    Parts m_parts;
    bool m_isEmpty = false; ///< since the start of the program
};

} // namespace melovane
