#pragma once

#include "platform/qt/panel.h"
#include "trackedit/edit_tag_form.h"
#include "trackedit/ui/panel_columns.h"
#include "trackedit/ui/panel_head.h"
#include "trackedit/ui/panel_inputs.h"

#include <array>
#include <functional>

class QFrame;
class QGridLayout;
class QLabel;
class QLineEdit;
class QScrollArea;
class QToolButton;

namespace melovane {

class ConfigObjects;
class CoverFrame;
class EditTag;
class FactLines;
class IconSet;
class RatingGroup;

/// The form of the tag panel, `EditTag1`: a head with the track, the cover, three columns of fields
/// and what is known of the file. In a narrow panel the columns go below one another, in a low one
/// the form scrolls.
class EditTagWidget : public Panel, public EditTagForm
{
    Q_OBJECT

public:
    EditTagWidget(const Skin& skin, const IconSet& icons, QWidget* parent = nullptr);

    /// Connects the form with its logic, which outlives its last event.
    void attach(EditTag& panel, const ConfigObjects& texts);

    /// Everything that stands still speaks the language of the texts as they are now.
    void translate(const ConfigObjects& texts);

    void detach() override;
    void setPanelShown(bool shown) override;
    [[nodiscard]] bool isPanelShown() const override;
    [[nodiscard]] int panelHeight() const override;
    void setPanelHeight(int height) override;
    void focusFirst() override;
    void setText(PanelField field, const QString& text) override;
    void setChoices(PanelField field, const QStringList& texts) override;
    void setRating(int option) override;
    void setRatingColours(const NoteColours& colours) override;
    void setTrack(const PanelTrack& track) override;
    void setUse(PanelUse use, const QString& why) override;
    void setWaiting(qint64 tracks) override;
    void setCover(const QByteArray& picture) override;

signals:
    /// The panel has come into the window, or has gone.
    void shownChanged(bool shown);
    /// The panel is to be this high, in units of the screen.
    void heightWanted(int height);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildMessage();
    void buildFields();
    void buildFirstColumn();
    void buildSecondColumn();
    void buildThirdColumn();
    void buildForm();
    void addField(QGridLayout& column, PanelField field);
    [[nodiscard]] QLineEdit* makeShownText(const QString& name);
    [[nodiscard]] QToolButton* makeTool(const QString& name, const QString& icon);
    void connectField(PanelField field);
    void tell(const std::function<void(EditTag& logic)>& what);
    void createToolBar(const ConfigObjects& texts);
    void setTexts(const ConfigObjects& texts);
    void setTabs();
    bool keyInField(PanelField field, int key);

    const IconSet& m_icons;
    EditTag* m_logic = nullptr;
    PanelInputs m_fields;
    PanelHead m_head;
    QLabel* m_message; ///< why the fields take nothing
    QScrollArea* m_scroll;
    QWidget* m_form;
    CoverFrame* m_cover;
    std::array<QLabel*, 4> m_shownLabels{}; ///< of rating, start, stop and level
    RatingGroup* m_rating;
    QFrame* m_line; ///< above the facts
    FactLines* m_facts;
    PanelColumns m_layout;
};

} // namespace melovane
