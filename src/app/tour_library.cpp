#include "app/gestures.h"
#include "app/tour.h"
#include "model/devicemoves.h"
#include "model/differences.h"
#include "model/functionrules.h"
#include "ui/library/librarymodel.h"
#include "ui/library/libraryview.h"
#include "ui/shell/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <algorithm>

using namespace gestures;

namespace {

/// Opens the context menu of a widget and takes an entry.
void chooseFromMenu(QWidget &widget, const QString &entry)
{
    QTimer::singleShot(0, [entry] {  // the menu runs an event loop of its own
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu) return;
        const QList<QAction *> actions = menu->actions();
        menu->setActiveAction(*std::ranges::find(actions, entry, &QAction::text));
        key(*menu, Qt::Key_Return);
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, widget.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&widget, &event);
}

}  // namespace

void Tour::libraryPage()
{
    click("pushButton_libraryTab");
    awaitAnswers();
    auto &table = find<LibraryView>(window, "tableView_library");
    check(QStringLiteral("the library has read all banks"), [&] {
        const QString last = table.model()->index(bankCount - 1, LibraryModel::NameColumn).data().toString();
        return last.toStdString() == unit.memory().banks[bankCount - 1].name;
    });
    picture(QStringLiteral("library"));
    auto &search = find<QLineEdit>(window, "lineEdit_find");
    type(search, QStringLiteral("fete d'ete"));
    check(QStringLiteral("a name is found without its accents"), [&] { return table.model()->rowCount() == 1; });
    picture(QStringLiteral("library-find"));
    search.selectAll();
    key(search, Qt::Key_Backspace);
    check(QStringLiteral("all banks are shown again"), [&] { return table.model()->rowCount() == bankCount; });
    arrangePresets(table);
    changeInSelection(table);
    copyBankByFile(table);
    saveSheets();
}

void Tour::arrangePresets(LibraryView &table)
{
    const UnitContent before = unit.memory();
    chooseInLibrary(table, 7, LibraryModel::FirstPresetColumn + 3, "COPY");
    chooseInLibrary(table, 0, LibraryModel::FirstPresetColumn + 1, "SWAP");
    checkUnit(QStringLiteral("preset 3 of bank 7 and preset 1 of bank 0 change places"), [&](const UnitMemory &memory) {
        return memory.presets[0][1] == before.presets[7][3] && memory.presets[7][3] == before.presets[0][1];
    });
    chooseInLibrary(table, 7, LibraryModel::NumberColumn, "MOVE UP");
    checkUnit(QStringLiteral("bank 7 stands before bank 6"), [&](const UnitMemory &memory) {
        return memory.banks[6] == before.banks[7] && memory.banks[7] == before.banks[6];
    });
    picture(QStringLiteral("library-arranged"));
    takeBack();
    takeBack();
    checkUnit(QStringLiteral("undo takes both back"),
              [&](const UnitMemory &memory) { return differences(memory, before, allRecords()).empty(); });
}

void Tour::chooseInLibrary(LibraryView &table, int bank, int column, const char *entry)
{
    const QModelIndex place = table.model()->index(bank, column);
    table.selectionModel()->setCurrentIndex(place, QItemSelectionModel::ClearAndSelect);
    const QList<QAction *> actions = table.actions();
    (*std::ranges::find(actions, QLatin1String(entry), &QAction::text))->trigger();
    awaitAnswers();
}

void Tour::changeInSelection(LibraryView &table)
{
    const UnitContent before = unit.memory();
    UnitContent expected = before;
    for (const std::size_t bank : {20U, 21U})
        for (PresetData &preset : expected.presets[bank])
            if (allows(allowedStates<LoopType>, preset.footswitchFunction, toIndex(LoopType::On)))
                preset.loops[5] = LoopType::On;
    const auto holds = [&](const UnitContent &content) {
        return [&](const UnitMemory &memory) { return differences(memory, content, allRecords()).empty(); };
    };
    table.selectBanks(20, 2);
    withDialog([&] { trigger("CHANGE IN SELECTION..."); },
               [&](QWidget &dialog) {
                   chooseFrom(find<QComboBox>(dialog, "comboBox_change"), QStringLiteral("BUFFER OR LOOP"));
                   chooseFrom(find<QComboBox>(dialog, "comboBox_loop"), QStringLiteral("LOOP 6"));
                   chooseFrom(find<QComboBox>(dialog, "comboBox_loopState"), QStringLiteral("ON"));
                   picture(QStringLiteral("change-in-selection"), &dialog);
                   clickOn(find<QPushButton>(dialog, "pushButton_ok"));
               });
    checkUnit(QStringLiteral("loop 6 is ON in all presets of two banks whose function allows it"), holds(expected));
    takeBack();
    checkUnit(QStringLiteral("undo takes it back"), holds(before));
}

void Tour::copyBankByFile(LibraryView &table)
{
    const UnitContent before = unit.memory();
    const QString file = pictures.filePath(QStringLiteral("bank.kora"));
    withDialog([&] { chooseInLibrary(table, 3, LibraryModel::NumberColumn, "EXPORT..."); },
               [&](QWidget &dialog) {
                   const QString proposed = find<QLineEdit>(dialog, "fileNameEdit").text();
                   check(QStringLiteral("a name for the file is proposed"), [&] { return proposed == "bank-3.kora"; });
                   chooseFile(file)(dialog);
               });
    withDialog([&] { chooseInLibrary(table, 90, LibraryModel::NumberColumn, "IMPORT..."); }, chooseFile(file));
    checkUnit(QStringLiteral("bank 90 is what bank 3 is"), [&](const UnitMemory &memory) {
        return memory.banks[90] == before.banks[3] && memory.presets[90] == before.presets[3];
    });
    takeBack();
    checkUnit(QStringLiteral("undo takes it back"),
              [&](const UnitMemory &memory) { return differences(memory, before, allRecords()).empty(); });
}

void Tour::takeBack()
{
    awaitAnswers();
    click("pushButton_undo");
    awaitAnswers();
}

void Tour::saveSheets()
{
    QFile sheets(pictures.filePath(QStringLiteral("sheets.pdf")));
    sheets.remove();
    click("pushButton_previewTab");
    auto *const menu = find<QPushButton>(window, "pushButton_saveSheets").menu();
    withDialogs([&] { menu->actions().constFirst()->trigger(); },
                {chooseFile(sheets.fileName()), closeBox(QStringLiteral("SHEETS SAVED"))});
    check(QStringLiteral("sheets.pdf holds the sheets of bank 0"),
          [&] { return sheets.open(QIODevice::ReadOnly) && sheets.readAll().startsWith("%PDF"); });
}

void Tour::moveDevices()
{
    const UnitContent before = unit.memory();
    const auto holds = [&](const UnitContent &expected) {
        return [&](const UnitMemory &memory) { return differences(memory, expected, allRecords()).empty(); };
    };
    click("pushButton_midiDevicesTab");
    const auto name = [&](int device) -> QWidget & {
        return cell<QLineEdit>(window, "tableWidget_midiDevices", device - 1, 0);
    };
    chooseFromMenu(name(10), QStringLiteral("COPY"));
    withDialog([&] { chooseFromMenu(name(1), QStringLiteral("SWAP")); },
               [&](QWidget &dialog) {
                   picture(QStringLiteral("carry-along"), &dialog);
                   clickOn(*dynamic_cast<QMessageBox &>(dialog).button(QMessageBox::Yes));
               });
    UnitContent swapped = before;
    arrange::swapDevices(1, 10, true).alter(swapped);
    checkUnit(QStringLiteral("two MIDI devices change places with all that presets send"), holds(swapped));
    takeBack();
    checkUnit(QStringLiteral("undo takes it back"), holds(before));
}
