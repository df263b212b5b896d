#pragma once

#include "model/unitcontent.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace archive {

/// A file that is worked on: it is saved again and again, as the part of a unit that it was, but for what is changed
/// beyond. It knows whether another program has changed it meanwhile.
class WorkingFile
{
public:
    /// Reads a file; what it leaves out is empty. Throws `Error`, also when no unit could tell what it holds.
    static WorkingFile open(const QString &path);
    /// Writes a whole unit without content. Throws `Error`.
    static WorkingFile create(const QString &path);

    const QString &path() const { return place; }
    /// What it held when it was opened.
    const UnitContent &content() const { return opened; }
    /// Whether it holds other bytes than those read or written last; not when it is gone. Throws `Error`.
    bool isChangedByOthers() const;
    /// Puts what it is to hold in its place, whatever is there. Throws `Error`; then the old file stands.
    void save(const UnitContent &now) { saveAs(place, now); }
    /// The same in another place, which is the file's from then on. Throws `Error`; then it stays the old one.
    void saveAs(const QString &path, const UnitContent &now);

private:
    WorkingFile(QString path, QByteArray bytes, QJsonObject toldMembers, UnitContent content);

    QString place;
    QByteArray held;   ///< what was read or written last
    QJsonObject told;  ///< the members that the file had when it was opened
    UnitContent opened;
    QJsonObject openedObject;  ///< all members
};

}  // namespace archive
