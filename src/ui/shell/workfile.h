#pragma once

#include "archive/workingfile.h"
#include "link/portlister.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class QAction;
class QMenu;
class QWidget;

/// A unit within the program that holds a file's content, so that the editor works on a file as it does on a unit.
class InnerUnit
{
public:
    InnerUnit() = default;
    InnerUnit(const InnerUnit &) = delete;
    InnerUnit &operator=(const InnerUnit &) = delete;
    virtual ~InnerUnit() = default;

    virtual QString location() const = 0;     ///< the path of its port
    virtual UnitContent content() const = 0;  ///< what it holds now
};

/// Makes such a unit, which calls `changed`, on any thread, after each change that it has taken. Throws a
/// `std::exception` when it cannot be made.
using InnerUnitMaker =
    std::function<std::unique_ptr<InnerUnit>(const UnitContent &content, std::function<void()> changed)>;

/// The file that the editor works on instead of a unit: the menu's entries for it, the unit that holds its content, and
/// saving. What that unit takes is saved at once, but not twice within a second.
class WorkFile : public QObject
{
    Q_OBJECT

public:
    /// What the window does for it.
    struct Window
    {
        QWidget *widget;                ///< the parent of dialogs
        std::function<void()> deliver;  ///< waits until the changes that were asked for are made
        std::function<void()> search;   ///< lets the unit go and finds the one that `ports` now names
    };

    /// `listUnits` names the ports of units, while no file is worked on. Without a maker no file can be.
    WorkFile(PortLister listUnits, InnerUnitMaker maker, Window owner);
    ~WorkFile() override;

    /// Names the ports to search. It may be called on any thread, also after this object has gone.
    PortLister ports() const;
    void fillMenu(QMenu &menu);

    bool isOpen() const { return inner != nullptr; }
    /// Whether the user was told that something could not be saved, and it still is not.
    bool isUnsaved() const { return unsaved; }
    /// Of the file that is worked on.
    QString path() const { return file->path(); }
    QString name() const;  ///< "gig.kora"
    /// Tells what is worked on now from what was before, and from units.
    QString identity() const { return QStringLiteral("file %1").arg(count); }

    /// Works on this file; tells why it cannot be read.
    void open(const QString &path);
    /// The user asks for it: saves what is not saved yet, and tells why it cannot be.
    void save() { saveOrAsk(Asked::WhileWorking); }
    /// Saves what is not saved yet. If that cannot be, the user is asked; false if he stays, which is offered if
    /// `mayStay`.
    bool leave(bool mayStay = true);

signals:
    /// Another file is worked on, or none, or in another place, or `isUnsaved` says another thing.
    void changed();

private:
    struct Ports;
    enum class Answer { Save, Reload, Elsewhere, GoOn, Stay };
    enum class Asked { WhileWorking, Leaving, LeavingForGood };

    void create();
    void close();
    /// Works on a file, or on units again.
    void goTo(std::optional<archive::WorkingFile> newFile);
    void goToFile(const std::function<archive::WorkingFile()> &newFile);
    void noteChange();
    void saveDue();
    bool saveOrAsk(Asked asked);
    // Each returns why not; empty when the file holds what the unit holds.
    QString trySaving();
    QString write(const QString &path);
    QString reload();
    Answer ask(const QString &problem, Asked asked);
    void setUnsaved(bool isUnsavedNow);
    void tell(const QString &text);
    QString otherPath() const;  ///< proposed for saving elsewhere: "gig-2.kora" beside the file
    /// A path to save at, or nothing.
    QString pathToSave(const QString &title, const QString &suggestion);

    const std::shared_ptr<Ports> onlyPort;
    const PortLister unitPorts;
    const InnerUnitMaker makeUnit;
    const Window window;
    std::optional<archive::WorkingFile> file;
    std::unique_ptr<InnerUnit> inner;    ///< while a file is worked on
    std::unique_ptr<InnerUnit> retired;  ///< the one before, since it may still be asked until another one is found
    UnitContent saved;                   ///< what the file holds
    QAction *backEntry = nullptr;
    QTimer saveTimer;
    QElapsedTimer lastTry;  ///< of saving
    int count = 0;          ///< of switches
    bool unsaved = false;
    bool isConflict = false;  ///< another program has changed the file
    bool isAsking = false;
    bool isGivenUp = false;  ///< the user goes on without saving
};
