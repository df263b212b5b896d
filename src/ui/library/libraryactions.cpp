#include "ui/library/libraryactions.h"

#include "model/arrangement.h"
#include "ui/library/librarymodel.h"
#include "ui/library/libraryview.h"
#include "ui/look.h"
#include "ui/shell/arranging.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QMenu>

#include <algorithm>

LibraryActions::LibraryActions(LibraryView &libraryView, Arranging &arrangements, std::function<bool()> mayChange)
    : QObject(&libraryView), view(libraryView), arranging(arrangements), canChange(std::move(mayChange)),
      menu(new QMenu(&view))
{
    menu->setStyleSheet(look::menuStyle() + QStringLiteral("\nQMenu::item:disabled { color: gray; }"));
    makeActions();
    view.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&view, &QWidget::customContextMenuRequested, this, &LibraryActions::showMenu);
    connect(&view, &QAbstractItemView::doubleClicked, open, &QAction::trigger);
    connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, &LibraryActions::update);
    connect(view.model(), &QAbstractItemModel::dataChanged, this, &LibraryActions::update);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &LibraryActions::updateClipboard);
    connect(&view, &LibraryView::presetsDropped, this, &LibraryActions::dropPresets);
    connect(&view, &LibraryView::banksDropped, this, &LibraryActions::dropBanks);
    update();
}

QAction *LibraryActions::add(const char *text, const std::function<void()> &act,
                             const std::initializer_list<const char *> &keys)
{
    QAction *const action = menu->addAction(QLatin1String(text), this, act);
    QList<QKeySequence> shortcuts;
    for (const char *const key : keys)
        shortcuts << QKeySequence(QLatin1String(key));
    action->setShortcuts(shortcuts);
    action->setShortcutContext(Qt::WidgetShortcut);  // a name that is edited has its own keys
    view.addAction(action);
    return action;
}

void LibraryActions::makeActions()
{
    open = add("OPEN", [this] { emit openAsked(view.currentRecord()->number); }, {"Return", "Enter"});
    renaming = add("RENAME", [this] { rename(); }, {"F2"});
    menu->addSeparator();
    cut = add("CUT", [this] { arranging.cut(view.selection()); }, {"Ctrl+X"});
    copy = add("COPY", [this] { arranging.copy(view.selection()); }, {"Ctrl+C"});
    paste = add("PASTE", [this] { arranging.paste(target()); }, {"Ctrl+V"});
    swap = add("SWAP", [this] { arranging.swap(target()); });
    clear = add("CLEAR", [this] { arranging.clear(view.selection()); }, {"Del"});
    change = add("CHANGE IN SELECTION...", [this] { emit changeAsked(view.selection()); });
    menu->addSeparator();
    insertBank = add("INSERT EMPTY BANK", [this] { arranging.insertEmptyBank(*view.selectedBanks().begin()); });
    removeBank = add("REMOVE BANK", [this] { arranging.removeBanks(view.selectedBanks()); });
    moveUp = add("MOVE UP", [this] { moveBanks(-1); }, {"Alt+Up"});
    moveDown = add("MOVE DOWN", [this] { moveBanks(1); }, {"Alt+Down"});
    menu->addSeparator();
    exportBanks = add("EXPORT...", [this] { arranging.exportBanks(view.selectedBanks()); });
    importBanks = add("IMPORT...", [this] { arranging.importBanks(*view.selectedBanks().begin()); });
    saveSheets = add("SAVE SHEETS...", [this] { emit sheetsAsked(view.selectedBanks()); });
}

void LibraryActions::update()
{
    const QModelIndexList cells = view.selectionModel()->selectedIndexes();
    const std::set<int> banks = view.selectedBanks();
    const bool isSelected = !cells.isEmpty();
    const bool isKnown = isSelected && std::ranges::all_of(cells, [](const QModelIndex &cell) {
                             return cell.data(LibraryModel::KnownRole).toBool();
                         });
    const bool mayChange = isSelected && canChange();
    open->setEnabled(view.currentIndex().isValid());
    renaming->setEnabled(mayChange && view.currentIndex().isValid());
    cut->setEnabled(mayChange && isKnown);
    copy->setEnabled(isKnown);
    paste->setEnabled(mayChange && canPaste);
    swap->setEnabled(mayChange && canPaste && arranging.canSwap(target()));
    clear->setEnabled(mayChange);
    change->setEnabled(mayChange);
    insertBank->setEnabled(mayChange);
    removeBank->setEnabled(mayChange);
    moveUp->setEnabled(mayChange && *banks.begin() > 0);
    moveDown->setEnabled(mayChange && *banks.rbegin() < bankCount - 1);
    exportBanks->setEnabled(isKnown);
    saveSheets->setEnabled(isSelected);
    importBanks->setEnabled(mayChange);
}

void LibraryActions::updateClipboard()
{
    if (!view.isVisible()) return;
    canPaste = arranging.canPaste();
    update();
}

RecordId LibraryActions::target() const { return *view.selection().begin(); }

void LibraryActions::rename()
{
    const QModelIndex current = view.currentIndex();
    view.edit(current.column() == LibraryModel::NumberColumn ? current.sibling(current.row(), LibraryModel::NameColumn)
                                                             : current);
}

void LibraryActions::moveBanks(int step)
{
    const std::set<int> banks = view.selectedBanks();
    const int gathered = static_cast<int>(banks.size());
    moveBanksTo(banks, step < 0 ? *banks.begin() - 1 : *banks.rbegin() + 2 - gathered);
}

void LibraryActions::moveBanksTo(const std::set<int> &banks, int to)
{
    arranging.moveBanks(banks, to);
    view.selectBanks(to, static_cast<int>(banks.size()));
}

void LibraryActions::dropBanks(const std::set<int> &banks, int target)
{
    if (!canChange() || banks.contains(target)) return;
    const bool isDown = target > *banks.begin();
    moveBanksTo(banks, isDown ? std::max(0, target + 1 - static_cast<int>(banks.size())) : target);
}

void LibraryActions::dropPresets(const std::set<RecordId> &presets, const RecordId &target, bool copies)
{
    if (!canChange() || presets.contains(target)) return;
    if (copies)
        arranging.make(arrange::copy(presets, target));
    else if (arrange::canSwap(presets, target))
        arranging.make(arrange::swap(presets, target));
}

void LibraryActions::showMenu(const QPoint &place)
{
    updateClipboard();
    menu->popup(view.viewport()->mapToGlobal(place));
}
