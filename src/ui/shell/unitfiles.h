#pragma once

#include "controller/devicecontroller.h"
#include "controller/safetycopies.h"
#include "model/differences.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QAction;
class QMenu;
class QWidget;
class RequestQueue;

/// Of a file dialog: the files of units.
QString unitFileFilter();

/// The entries of BACKUP, RESTORE and FACTORY RESET: what the unit holds goes to a file, and what a file holds goes to
/// the unit, after the user has seen what differs and a safety copy was made, and is read back. And sheets of banks.
class UnitFiles : public QObject
{
    Q_OBJECT

public:
    /// What the window does for it.
    struct Window
    {
        QWidget *widget;                                ///< the parent of dialogs
        std::function<int()> shownBank;                 ///< of the presets page
        std::function<QString()> name;                  ///< of what is worked on, for people
        std::function<void(const QString &)> showBusy;  ///< with a text, until hideBusy
        std::function<void()> hideBusy;
    };

    UnitFiles(RequestQueue &queue, DeviceController &unit, Window owner, SafetyCopies safetyCopies = SafetyCopies());

    void fillMenus(QMenu &backup, QMenu &restore, QMenu &reset);
    /// The entries need a unit.
    void setEnabled(bool enabled);
    /// Reads the unit and saves a safety copy, then calls `then`; not if the user stops it or does not go on without.
    void protect(const std::function<void()> &then);
    /// Shows in what the unit differs from a file, and writes what the user chooses of it.
    void restoreFrom(const QString &path);
    using Then = std::function<void(const TransferReport &)>;
    /// Reads records as one transfer behind the veil, and goes on with what was read; not if that fails, which is told,
    /// or the user stops it.
    void read(const std::set<RecordId> &records, const QString &busyText, Then then);
    /// The same with those that have not been read yet, and at once if all have.
    void readUnknown(std::set<RecordId> records, const std::function<void()> &then);
    /// The model that tells what has been read; null without one.
    void setModel(DataFromDevice *model) { data = model; }
    /// Asks for a file and saves sheets of these banks (0 to 99). What has not been read of them is read first.
    void saveSheets(const std::set<int> &banks);
    /// The same with all banks that hold anything.
    void saveAllSheets();
    /// Ends the transfer that runs, between two exchanges.
    void cancel();

private:
    void backUp(const QString &suggestedName, const std::set<RecordId> &records);
    void compareWith(const QString &path);
    void clear(const std::set<RecordId> &records);
    /// Shows in what the unit differs from `part`, and writes what the user leaves checked.
    void offer(const UnitPart &present, const UnitPart &part, const QString &name);
    void write(const UnitPart &present, const std::vector<Difference> &chosen, const UnitContent &source);
    void tellResult(const TransferReport &report, const UnitContent &wanted, const std::vector<Difference> &chosen);
    bool isSafe(const UnitPart &present);
    bool asksToGoOn(const QString &why);
    void tell(const QString &title, const QString &text, bool isError = false);
    QString openPath(const QString &title, const QString &folder = QString());
    /// Asks for a file, reads what is unknown of `banks` and saves sheets of those that `chosen` names then.
    void saveSheetsOf(const std::set<int> &banks, const QString &suggestedName, std::function<std::set<int>()> chosen);
    QString pathOfSheets(const QString &suggestedName);
    void writeSheets(const QString &path, const std::set<int> &banks);
    /// Loads a file; tells why it cannot be and returns nothing then.
    std::optional<UnitPart> load(const QString &path, const UnitContent &base = {});
    void transferred(const TransferReport &report);

    RequestQueue &requests;
    DeviceController &controller;
    Window window;
    SafetyCopies copies;
    std::vector<QAction *> entries;
    DataFromDevice *data = nullptr;
    Then waiting;  ///< what comes after the transfer that runs
};
