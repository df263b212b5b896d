#include "ui/shell/workfile.h"

#include "archive/unitfile.h"
#include "ui/message.h"
#include "ui/shell/unitfiles.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>
#include <mutex>

namespace {

constexpr int savePause = 1000;  // ms between two saves

}  // namespace

/// The only port to search, if there is one; shared with the thread that searches.
struct WorkFile::Ports
{
    QString only() const
    {
        const std::lock_guard lock(mutex);
        return port;
    }
    void setOnly(const QString &location)
    {
        const std::lock_guard lock(mutex);
        port = location;
    }

private:
    mutable std::mutex mutex;
    QString port;
};

WorkFile::WorkFile(PortLister listUnits, InnerUnitMaker maker, Window owner)
    : onlyPort(std::make_shared<Ports>()), unitPorts(listUnits ? std::move(listUnits) : systemPortLocations),
      makeUnit(std::move(maker)), window(std::move(owner))
{
    saveTimer.setSingleShot(true);
    connect(&saveTimer, &QTimer::timeout, this, &WorkFile::saveDue);
}

WorkFile::~WorkFile() = default;

PortLister WorkFile::ports() const
{
    return [shared = onlyPort, units = unitPorts] {
        const QString only = shared->only();
        return only.isEmpty() ? units() : QStringList(only);
    };
}

void WorkFile::fillMenu(QMenu &menu)
{
    QAction *const openEntry = menu.addAction(QStringLiteral("WORK ON A FILE..."), this, [this] {
        const QString path =
            QFileDialog::getOpenFileName(window.widget, tr("Work on a file"), QDir::homePath(), unitFileFilter());
        if (!path.isEmpty()) open(path);
    });
    QAction *const newEntry = menu.addAction(QStringLiteral("NEW FILE..."), this, &WorkFile::create);
    openEntry->setEnabled(makeUnit != nullptr);
    newEntry->setEnabled(makeUnit != nullptr);
    backEntry = menu.addAction(QStringLiteral("BACK TO THE UNIT"), this, &WorkFile::close);
    backEntry->setEnabled(false);
}

QString WorkFile::name() const { return QFileInfo(path()).fileName(); }

QString WorkFile::otherPath() const
{
    const QFileInfo present(path());
    return present.dir().filePath(present.completeBaseName() + QStringLiteral("-2.kora"));
}

// --- Which file

void WorkFile::open(const QString &path)
{
    goToFile([place = QFileInfo(path).absoluteFilePath()] { return archive::WorkingFile::open(place); });
}

void WorkFile::create()
{
    const QString path = pathToSave(tr("New file"), QDir::home().filePath(QStringLiteral("new.kora")));
    if (!path.isEmpty()) goToFile([path] { return archive::WorkingFile::create(path); });
}

void WorkFile::close()
{
    if (leave()) goTo(std::nullopt);
}

void WorkFile::goToFile(const std::function<archive::WorkingFile()> &newFile)
{
    if (!leave()) return;
    try {
        goTo(newFile());
    } catch (const std::exception &error) {
        isGivenUp = false;
        tell(QString::fromUtf8(error.what()));
    }
}

void WorkFile::goTo(std::optional<archive::WorkingFile> newFile)
{
    const auto noteLater = [this] { QMetaObject::invokeMethod(this, &WorkFile::noteChange, Qt::QueuedConnection); };
    std::unique_ptr<InnerUnit> next = newFile ? makeUnit(newFile->content(), noteLater) : nullptr;
    retired = std::exchange(inner, std::move(next));
    file = std::move(newFile);
    saved = inner ? inner->content() : UnitContent();
    onlyPort->setOnly(inner ? inner->location() : QString());
    ++count;
    unsaved = isGivenUp = false;
    backEntry->setEnabled(isOpen());
    window.search();
    emit changed();
}

bool WorkFile::leave(bool mayStay)
{
    if (isAsking) return false;
    if (mayStay) window.deliver();
    return saveOrAsk(mayStay ? Asked::Leaving : Asked::LeavingForGood);
}

// --- Saving

void WorkFile::noteChange()
{
    if (saveTimer.isActive()) return;
    saveTimer.start(lastTry.isValid() ? static_cast<int>(std::max<qint64>(0, savePause - lastTry.elapsed())) : 0);
}

void WorkFile::saveDue()
{
    if (unsaved && !isAsking && !isGivenUp)
        trySaving();  // the user knows
    else
        saveOrAsk(Asked::WhileWorking);
}

bool WorkFile::saveOrAsk(Asked asked)
{
    if (!inner || isAsking || isGivenUp) return true;
    const QScopedValueRollback<bool> asking(isAsking, true);
    for (QString problem = trySaving(); !problem.isEmpty();) {
        setUnsaved(true);
        switch (ask(problem, asked)) {
        case Answer::Save:
            problem = isConflict ? write(path()) : trySaving();
            break;
        case Answer::Elsewhere:
            if (const QString elsewhere = pathToSave(tr("Save elsewhere"), otherPath()); !elsewhere.isEmpty())
                problem = write(elsewhere);
            break;
        case Answer::Reload:
            problem = reload();
            break;
        case Answer::GoOn:
            isGivenUp = true;
            return true;
        case Answer::Stay:
            return false;
        }
    }
    return true;
}

QString WorkFile::trySaving()
{
    lastTry.start();
    isConflict = false;
    if (inner->content() == saved) {
        setUnsaved(false);
        return {};
    }
    try {
        isConflict = file->isChangedByOthers();
    } catch (const archive::Error &error) {
        return QString::fromUtf8(error.what());
    }
    return isConflict ? tr("Another program has changed %1.").arg(name()) : write(path());
}

QString WorkFile::write(const QString &path)
{
    const UnitContent now = inner->content();
    const bool isNews = unsaved || path != file->path();
    isConflict = false;
    try {
        file->saveAs(path, now);
    } catch (const archive::Error &error) {
        return QString::fromUtf8(error.what());
    }
    saved = now;
    unsaved = false;
    if (isNews) emit changed();
    return {};
}

QString WorkFile::reload()
{
    try {
        goTo(archive::WorkingFile::open(path()));
        return {};
    } catch (const std::exception &error) {
        return QString::fromUtf8(error.what());
    }
}

void WorkFile::setUnsaved(bool isUnsavedNow)
{
    if (std::exchange(unsaved, isUnsavedNow) != isUnsavedNow) emit changed();
}

// --- Questions

WorkFile::Answer WorkFile::ask(const QString &problem, Asked asked)
{
    QMessageBox box(QMessageBox::Warning, isConflict ? QStringLiteral("FILE CHANGED") : QStringLiteral("NOT SAVED"),
                    QString(), QMessageBox::NoButton, window.widget);
    box.setTextFormat(Qt::PlainText);
    box.setText(tr("%1\nWhat you changed is kept here, but it is not saved.").arg(problem));
    std::vector<std::pair<QAbstractButton *, Answer>> answers;
    const auto offer = [&](const QString &text, QMessageBox::ButtonRole role, Answer answer) {
        QPushButton *const button = box.addButton(text, role);
        answers.emplace_back(button, answer);
        box.setDefaultButton(button);
        return button;
    };
    const bool isLeaving = asked != Asked::WhileWorking;
    offer(isConflict ? tr("Overwrite") : tr("Try again"), QMessageBox::ActionRole, Answer::Save);
    if (isConflict && !isLeaving) offer(tr("Reload"), QMessageBox::ActionRole, Answer::Reload);
    if (isLeaving) offer(tr("Go on without saving"), QMessageBox::DestructiveRole, Answer::GoOn);
    offer(tr("Save elsewhere..."), QMessageBox::ActionRole, Answer::Elsewhere);
    if (asked != Asked::LeavingForGood)
        box.setEscapeButton(offer(isLeaving ? tr("Cancel") : tr("Later"), QMessageBox::RejectRole, Answer::Stay));
    box.exec();
    const auto clicked = std::ranges::find(answers, box.clickedButton(), [](const auto &each) { return each.first; });
    return clicked == answers.end() ? Answer::Stay : clicked->second;
}

void WorkFile::tell(const QString &text) { message::tell(window.widget, QStringLiteral("Error"), text); }

QString WorkFile::pathToSave(const QString &title, const QString &suggestion)
{
    QFileDialog dialog(window.widget, title, QFileInfo(suggestion).path(), unitFileFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("kora"));
    dialog.selectFile(QFileInfo(suggestion).fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}
