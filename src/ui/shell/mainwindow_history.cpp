#include "ui/combobox.h"
#include "ui/dialogs/historydialog.h"
#include "ui/highlight.h"
#include "ui/message.h"
#include "ui/namebutton.h"
#include "ui/shell/mainwindow.h"
#include "ui/tables/banktable.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTableWidget>

namespace {

constexpr int veiledRecords = 12;  // a step that alters more than a bank takes a while

// Where the bank tables have their columns
constexpr int functionColumn = 2;
constexpr int firstValueColumn = 4;
constexpr int padActionColumn = 3;
constexpr std::array<int, SubTabCount> bankNameColumns{3, 2, 2, 2, 1};
constexpr std::array<int, SubTabCount> presetNameColumns{4, 3, 3, 3, -1};

QKeySequence redoKeys() { return QKeySequence(QStringLiteral("Ctrl+Shift+Z")); }
QKeySequence otherRedoKeys() { return QKeySequence(QStringLiteral("Ctrl+Y")); }
QKeySequence undoKeys() { return QKeySequence(QStringLiteral("Ctrl+Z")); }

/// Ends what a text edit could take back or make again by itself.
void forgetTyping(QLineEdit *edit)
{
    if (!edit->isUndoAvailable() && !edit->isRedoAvailable()) return;
    const QSignalBlocker blocker(edit);
    const int start = edit->selectionStart(), length = edit->selectionLength(), cursor = edit->cursorPosition();
    edit->setText(edit->text());
    edit->setCursorPosition(cursor);
    if (length > 0) edit->setSelection(start, length);
}

/// Whether a text edit has no use for keys that undo or redo: nothing in it has been changed.
bool leavesToWindow(const QLineEdit *edit, const QKeyEvent *event)
{
    const QKeySequence keys(event->key() | static_cast<int>(event->modifiers()));
    if (edit->isModified()) return false;
    return keys == undoKeys() || (!edit->isRedoAvailable() && (keys == redoKeys() || keys == otherRedoKeys()));
}

/// Whether the focus comes to a text for another one to be typed, not back from a menu or a window.
bool beginsTyping(const QEvent *event)
{
    if (event->type() != QEvent::FocusIn) return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
}

void showStep(QPushButton *button, const QString &what, bool enabled, const QString &words)
{
    button->setEnabled(enabled);
    button->setToolTip(words.isEmpty() ? what : plainToolTip(what + QStringLiteral(": ") + words));
}

}  // namespace

void MainWindow::connectHistory()
{
    const auto undo = [this] {
        if (canChange() && history.canUndo()) history.undo();
    };
    const auto redo = [this] {
        if (canChange() && history.canRedo()) history.redo();
    };
    const auto onKeys = [this](const QKeySequence &keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    onKeys(undoKeys(), undo);
    onKeys(redoKeys(), redo);
    onKeys(otherRedoKeys(), redo);
    onKeys(QKeySequence(QStringLiteral("Ctrl+H")), [this] { openHistory(); });
    connect(ui.pushButton_undo, &QPushButton::clicked, this, undo);
    connect(ui.pushButton_redo, &QPushButton::clicked, this, redo);
    qApp->installEventFilter(this);

    connect(&history, &History::changed, this, &MainWindow::showHistory);
    connect(&history, &History::arrived, this, &MainWindow::showValues);
    connect(&history, &History::stayed, this, &MainWindow::tellStayed);
    connect(&history, &History::began, this, [this](int records) {
        isStepVeiled = records > veiledRecords && !isVeiled;
        if (isStepVeiled) showTransfer(tr("CHANGING THE UNIT"));
    });
    connect(&history, &History::ended, this, [this] {
        if (std::exchange(isStepVeiled, false)) hideTransfer();
    });
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (auto *const edit = qobject_cast<QLineEdit *>(watched); edit && edit->window() == this) {
        if (beginsTyping(event)) forgetTyping(edit);
        if (event->type() == QEvent::ShortcutOverride && leavesToWindow(edit, static_cast<QKeyEvent *>(event))) {
            forgetTyping(edit);  // the redo of what the window undoes is the window's, too
            event->ignore();
            return true;
        }
    }
    if (const auto *const widget = qobject_cast<QWidget *>(watched);
        widget && widget->window() == this && takesFile(event))
        return true;
    if (watched == ui.label_deviceStatus && event->type() == QEvent::MouseButtonPress && !isConnected()) {
        on_pushButton_connection_clicked();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

QPushButton *MainWindow::focusedButton() const
{
    return ui.pushButton_undo->hasFocus()   ? ui.pushButton_undo
           : ui.pushButton_redo->hasFocus() ? ui.pushButton_redo
                                            : nullptr;
}

void MainWindow::showHistory()
{
    const auto &steps = history.steps();
    const std::size_t made = history.position();
    QPushButton *const focused = focusedButton();
    showStep(ui.pushButton_undo, tr("Undo"), canChange() && history.canUndo(),
             made > 0 ? steps[made - 1].words : QString());
    showStep(ui.pushButton_redo, tr("Redo"), canChange() && history.canRedo(),
             made < steps.size() ? steps[made].words : QString());
    if (focused && !focused->isEnabled())  // the way back from the last step lies beside it
        (focused == ui.pushButton_undo ? ui.pushButton_redo : ui.pushButton_undo)->setFocus();
}

void MainWindow::openHistory()
{
    QStringList words;
    for (const History::Step &step : history.steps())
        words << step.words;
    HistoryDialog dialog(words, static_cast<int>(history.position()), this);
    if (dialog.exec() == QDialog::Accepted && canChange()) history.goTo(static_cast<std::size_t>(dialog.chosen()));
}

void MainWindow::tellStayed(const QStringList &places)
{
    if (isClosing) return;
    message::show(this, QStringLiteral("CHANGED MEANWHILE"),
                  tr("%1\n%2 been changed meanwhile and %3.")
                      .arg(message::fitting(places).join(QLatin1Char('\n')),
                           places.size() == 1 ? tr("has") : tr("have"), places.size() == 1 ? tr("stays") : tr("stay")));
}

// --- Where it happened

void MainWindow::showValues(const std::vector<Difference> &values)
{
    if (values.empty() || isClosing || showInLibrary(values)) return;
    const EditorPlace first = placeOf(values.front());
    const bool isElsewhere = ui.page(first.page)->isHidden();
    QPushButton *const focused = focusedButton();
    if (isElsewhere) ui.pages[first.page].button->click();
    if (first.page == PresetsPageIndex) {
        if (ui.table(first.subTab)->isHidden()) ui.subTabs[first.subTab].button->click();
        jumpTo(first.bank);
    }
    if (isElsewhere && !focused && first.editor) first.editor->setFocus();
    for (const Difference &value : values) {
        const EditorPlace place = placeOf(value);
        const bool isBeside =
            place.page == first.page && place.subTab == first.subTab && place.bank == first.bank && place.editor;
        if (isBeside) Highlight::lightUp(place.editor);
    }
}

MainWindow::EditorPlace MainWindow::placeOf(const Difference &value) const
{
    using Kind = RecordId::Kind;
    const auto setting = [&](PageIndex page) {
        const int record = static_cast<int>(value.record.kind) - static_cast<int>(Kind::Settings);
        const auto found = std::ranges::find_if(settingBoxes, [&](const SettingBox &box) {
            return box.id.record == record && box.id.row == value.value.row;
        });
        return EditorPlace{page, {}, 0, found == settingBoxes.end() ? nullptr : found->box};
    };
    switch (value.record.kind) {
    case Kind::MidiIn:
        return setting(MidiInPageIndex);
    case Kind::ExpressionPedal:
        return setting(ExpressionPedalPageIndex);
    case Kind::SwitchOuts:
        return {SwitchOutPageIndex, {}, 0, switchOutBoxes[value.value.slot]};
    case Kind::MidiDevice: {  // its table has a column for each row of the record's
        const auto *const table = static_cast<QTableWidget *>(ui.page(MidiDevicesPageIndex));
        return {MidiDevicesPageIndex, {}, 0, table->cellWidget(value.record.number - 1, value.value.row)};
    }
    case Kind::Bank:
    case Kind::Preset:
        return placeOfBank(value);
    default:
        return setting(SettingsPageIndex);
    }
}

MainWindow::EditorPlace MainWindow::placeOfBank(const Difference &value) const
{
    const RecordId &id = value.record;
    if (id.kind == RecordId::Kind::Preset) {
        const auto [subTab, column] = columnOfPreset(value);
        return {PresetsPageIndex, subTab, id.number, bankTables[subTab]->editor(id.preset, column)};
    }
    if (value.value.row == rowIndexOf<&BankData::name>()) {
        const std::size_t shown = shownSubTab();
        return {PresetsPageIndex, static_cast<SubTabIndex>(shown), id.number,
                bankTables[shown]->editor(0, bankNameColumns[shown])};
    }
    const int place = value.value.row - rowIndexOf<&BankData::wahPad1Action>();  // action and preset of each pad
    return {PresetsPageIndex, WahPadsTab, id.number,
            bankTables[WahPadsTab]->editor(place / 2, padActionColumn + place % 2)};
}

std::pair<SubTabIndex, int> MainWindow::columnOfPreset(const Difference &value) const
{
    const ValueId &id = value.value;
    if (id.row == rowIndexOf<&PresetData::footswitchFunction>()) return {FootswitchFunctionTab, functionColumn};
    if (id.row == rowIndexOf<&PresetData::bufferLoop>()) return {LoopsTab, firstValueColumn};
    if (id.row == rowIndexOf<&PresetData::loops>()) return {LoopsTab, firstValueColumn + 1 + id.slot};
    if (id.row == rowIndexOf<&PresetData::switches>()) return {SwitchTab, firstValueColumn + id.slot};
    if (id.row == rowIndexOf<&PresetData::programChanges>()) return {MidiTab, firstValueColumn + id.slot};
    if (id.row == rowIndexOf<&PresetData::controlChanges>()) return {MidiTab, firstValueColumn + id.slot - 1};
    if (id.row == rowIndexOf<&PresetData::expressionPedal>()) {
        const auto &slot = data->presetData.at(static_cast<std::size_t>(value.record.number));
        const auto preset = slot.at(static_cast<std::size_t>(value.record.preset)).load();
        const int device = preset ? preset->expressionPedal.midiDeviceNumber : none;
        return {MidiTab, range::device.contains(device) ? firstValueColumn + device - 1 : presetNameColumns[MidiTab]};
    }
    const auto shown = static_cast<SubTabIndex>(shownSubTab());
    const SubTabIndex named = presetNameColumns[shown] < 0 ? FootswitchFunctionTab : shown;
    return {named, presetNameColumns[named]};
}
