#pragma once

#include "trackedit/panel_fields.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QObject;
class QWidget;

namespace melovane {

class ConfigObjects;

/// The fields of the tag panel that hold a text: a line or a list each, with its label.
class PanelInputs
{
public:
    struct Field
    {
        QLabel* label = nullptr;
        QLineEdit* edit = nullptr; ///< that of the box, for a list
        QComboBox* box = nullptr;

        /// The line, or the box around it.
        [[nodiscard]] QWidget* whole() const;
    };

    /// Makes a field, which `watcher` filters the events of, and gives what is to be laid out.
    QWidget* make(PanelField field, QObject& watcher);

    [[nodiscard]] Field& at(PanelField field) { return m_fields[std::size_t(field)]; }

    /// Whose keyboard it is: that of a list is had by its box. Nothing for any other widget.
    [[nodiscard]] std::optional<PanelField> fieldOf(const QObject* watched) const;

    /// A text that stands there already changes nothing, so that the cursor stays.
    void setText(PanelField field, const QString& text);
    /// What stands in the field stays.
    void setChoices(PanelField field, const QStringList& texts);
    void setCaptions(const ConfigObjects& texts);

    /// \param isThere there is a track whose texts can be read
    void setUse(bool isThere, bool isEditable);

private:
    std::array<Field, kPanelFields> m_fields;
};

/// A label in second place that leads to what it names.
[[nodiscard]] QLabel* makeFieldLabel(QWidget* buddy);

} // namespace melovane
