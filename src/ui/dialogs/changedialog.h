#pragma once

#include "model/presetchange.h"
#include "ui/dialogs/answerdialog.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

class ComboBox;
class QGridLayout;
class QLineEdit;
class QStackedWidget;

/// Asks for one change that is made to all selected presets, and says as one chooses how much it would change. It sends
/// nothing itself.
class ChangeDialog : public AnswerDialog
{
    Q_OBJECT

public:
    using Devices = std::array<MidiDevice, midiDeviceCount>;
    using Counter = std::function<arrange::ChangeCount(const PresetChange &)>;

    /// `selection` names what is selected, `counter` counts in it.
    ChangeDialog(const QString &selection, const Devices &definitions, Counter counter, QWidget *parent);

    /// What is chosen; nothing while it is not complete.
    std::optional<PresetChange> change() const;

private:
    using Chosen = std::function<std::optional<PresetChange>()>;

    /// The page of one kind of change.
    QGridLayout *addPage(const QString &kind);
    /// A labelled row; `role` names its widgets.
    template <typename Editor>
    Editor *add(QGridLayout *page, const QString &role, const QString &text, Editor *editor);
    /// Shows no item at first, unless `shown` says which.
    ComboBox *addBox(QGridLayout *page, const QString &role, const QString &text, const QStringList &items,
                     int shown = -1);
    QLineEdit *addEdit(QGridLayout *page, const QString &role, const QString &text);
    /// A box for the controllers of the device that another box shows, whose first device is the item `firstDevice`.
    ComboBox *addControllers(QGridLayout *page, const QString &role, ComboBox *deviceBox, int firstDevice = 0);

    // Each returns what tells what is chosen on its page.
    Chosen makeFunctionPage();
    Chosen makeLoopPage();
    Chosen makeSwitchPage();
    Chosen makeProgramPage();
    Chosen makeControlPage();
    Chosen makePedalPage();
    Chosen makeNamePage();

    QStringList deviceNames() const;
    void showCount();

    const Devices devices;
    const Counter countOf;
    ComboBox *kinds;
    QStackedWidget *pages;
    QLabel *count;
    std::vector<Chosen> chosen;  // by page
};
