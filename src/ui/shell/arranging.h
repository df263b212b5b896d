#pragma once

#include "controller/devicecontroller.h"
#include "model/arrangement.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>
#include <set>

class QAction;
class RequestQueue;

/// What the user does with whole presets and banks, on any page: copies, pastes, moves, clears them. It asks where
/// something would be lost, makes each as one request and tells what could not be made. The system's clipboard carries
/// the JSON of a file, as text too.
///
/// A selection is a set of records: a preset's, or those of `recordsOfBank` for a whole bank. A target is a preset or a
/// bank.
class Arranging : public QObject
{
    Q_OBJECT

public:
    /// What the window does for it.
    struct Window
    {
        QWidget *widget;                                ///< the parent of dialogs
        std::function<void(const QString &)> showBusy;  ///< with a text, until hideBusy
        std::function<void()> hideBusy;
        std::function<bool()> canChange;  ///< whether the user may change anything now
    };

    Arranging(RequestQueue &queue, DeviceController &unit, Window owner);

    /// The model that tells what is copied; null without one.
    void setModel(DataFromDevice *model) { data = model; }

    /// Puts them on the clipboard; nothing if a record of them has not been read yet.
    void copy(const std::set<RecordId> &selection);
    /// What was copied here, as long as the clipboard carries it.
    std::set<RecordId> ownCopy() const { return isOwn() ? copied : std::set<RecordId>(); }
    /// The JSON on the clipboard; empty if there is none.
    static QByteArray clipboardJson();
    /// Whether all of these records have been read.
    bool isKnown(const std::set<RecordId> &selection) const;
    /// As `copy`; they are cleared when they are pasted.
    void cut(const std::set<RecordId> &selection);
    /// Whether there is something on the clipboard that may be pasted.
    bool canPaste() const;
    /// Checks what is on the clipboard like a file, and tells what is wrong with it.
    void paste(const RecordId &target);
    /// What was copied here changes places with what stands at the target.
    bool canSwap(const RecordId &target) const;
    void swap(const RecordId &target);
    /// Asks first.
    void clear(const std::set<RecordId> &selection);

    /// The menu of one preset or bank, under its place: "COPY", "PASTE", "SWAP", "CLEAR", and then others.
    void showMenu(const RecordId &place, const QPoint &position, const QList<QAction *> &others = {});

    /// Two presets change places.
    void swapPresets(const RecordId &one, const RecordId &other);
    void copyPreset(const RecordId &from, const RecordId &to);
    /// The banks stand together from bank `to` on; those between shift.
    void moveBanks(const std::set<int> &banks, int to);
    /// Asks if the last bank has content, which goes.
    void insertEmptyBank(int at);
    /// Asks if they have content.
    void removeBanks(const std::set<int> &banks);

    /// Asks for a file and saves what is known of the banks.
    void exportBanks(const std::set<int> &banks);
    /// Asks for a file; its banks go from bank `to` on.
    void importBanks(int to);

    /// Makes an arrangement as one request. It takes the mouse and keys away and shows progress when it takes longer
    /// than half a second, and tells what could not be made.
    void make(const Arrangement &arrangement);

private:
    void arranged(const ArrangementReport &report);
    bool hasContent(const std::set<int> &banks) const;
    void pastePart(const UnitPart &part, const RecordId &target, const std::set<RecordId> &cutRecords = {});
    /// Whether the clipboard still carries what was copied here.
    bool isOwn() const;
    bool asks(const QString &title, const QString &question);
    void tell(const QString &title, const QString &text);

    RequestQueue &requests;
    Window window;
    DataFromDevice *data = nullptr;
    QTimer slow;                ///< runs out when an arrangement takes long
    bool isBusyShown = false;   ///< by an arrangement
    QString copiedText;         ///< what `copy` or `cut` has put on the clipboard
    std::set<RecordId> copied;  ///< and of which records
    bool isCut = false;         ///< whether they are cleared when they are pasted
};
