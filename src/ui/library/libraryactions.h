#pragma once

#include "model/unitcontent.h"

#include <QObject>

#include <functional>
#include <initializer_list>
#include <set>

class Arranging;
class LibraryView;
class QAction;
class QMenu;

/// What can be done with what is selected in the library: keys, the context menu, drag and drop.
class LibraryActions : public QObject
{
    Q_OBJECT

public:
    LibraryActions(LibraryView &libraryView, Arranging &arrangements, std::function<bool()> mayChange);

    /// Greys what does not apply to the selection.
    void update();
    /// Learns what is on the clipboard, but only while the library is shown: its owner may be slow to tell.
    void updateClipboard();

signals:
    void openAsked(int bank);
    /// Sheets of these banks are to be saved.
    void sheetsAsked(const std::set<int> &banks);
    /// One change is to be made to all presets of a selection.
    void changeAsked(const std::set<RecordId> &selection);

private:
    QAction *add(const char *text, const std::function<void()> &act,
                 const std::initializer_list<const char *> &keys = {});
    void makeActions();
    /// Where something is pasted: the first place of the selection.
    RecordId target() const;
    void rename();
    /// Moves the selected banks up or down by one; they stay selected.
    void moveBanks(int step);
    void moveBanksTo(const std::set<int> &banks, int to);
    void dropBanks(const std::set<int> &banks, int target);
    void dropPresets(const std::set<RecordId> &presets, const RecordId &target, bool copies);
    void showMenu(const QPoint &place);

    LibraryView &view;
    Arranging &arranging;
    std::function<bool()> canChange;
    QMenu *menu;
    bool canPaste = false;
    QAction *open, *renaming, *cut, *copy, *paste, *swap, *clear, *change;
    QAction *insertBank, *removeBank, *moveUp, *moveDown, *exportBanks, *importBanks, *saveSheets;
};
