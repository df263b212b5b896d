#pragma once

#include "model/unitcontent.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <stdexcept>

// The file of a unit, or of a part of one (".kora"): JSON whose members are the keys of the records' tables
// (records.h). An enumeration's value stands as its label, a flag as true or false, none as null, and the two special
// values of a control change as "TOGGLE" and "INACTIVE". What a unit told although it should not comes back as well: an
// enumeration's value without a label is a number, a number out of range {"number": 77}, and a text that is not UTF-8
// or that no frame can carry {"bytes": "hexadecimal"}.
namespace archive {

inline constexpr int maxFileSize = 16 << 20;  ///< bytes

/// A file that cannot be read or written; what() tells where and why: "banks[3].presets[4].loops[1]: ...".
struct Error : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// An object as JSON. Characters without a face are told by their numbers, so that a terminal may show it as it is.
QByteArray jsonText(const QJsonObject &object);

/// The known records as the members of a file.
QJsonObject toObject(const UnitPart &part, const QDateTime &saved);

/// The known records as a file. The same part and time always make the same bytes.
QByteArray toJson(const UnitPart &part, const QDateTime &saved);

/// What a file tells. A value that it leaves out is as in `base`, and a record of which it tells no value is not among
/// the records. Throws `Error`.
UnitPart fromJson(const QByteArray &json, const UnitContent &base = {});

/// What stands in a file, up to one byte more than `maxFileSize`. Throws `Error`.
QByteArray readBytes(const QString &path);

/// Writes the file anew and puts it in place only when it is complete; what is there but is no regular file (a pipe, a
/// device) is written to. Throws `Error`.
void writeBytes(const QString &path, const QByteArray &bytes);

/// Writes the known records, as `writeBytes`.
void save(const QString &path, const UnitPart &part, const QDateTime &saved = QDateTime::currentDateTimeUtc());

/// The same in a folder that is made if it is not there. Returns why it could not be; empty when it was.
QString trySaving(const QString &path, const UnitPart &part, const QDateTime &saved = QDateTime::currentDateTimeUtc());

/// As `fromJson`; the error names the file, too.
UnitPart load(const QString &path, const UnitContent &base = {});

}  // namespace archive
