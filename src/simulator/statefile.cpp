#include "simulator/statefile.h"

#include "archive/unitfile.h"

#include <QFile>
#include <QSaveFile>

#include <stdexcept>

namespace {

QString firmwareFile(const QString &file) { return file + QStringLiteral(".firmware"); }

}  // namespace

void saveState(const QString &file, const UnitMemory &memory)
{
    archive::save(file, {memory, allRecords()});
    QSaveFile image(firmwareFile(file));
    const auto *bytes = reinterpret_cast<const char *>(memory.firmware.data());
    const bool isOpen = image.open(QIODevice::WriteOnly);
    if (isOpen) image.write(bytes, static_cast<qint64>(memory.firmware.size()));
    if (!isOpen || !image.commit())
        throw std::runtime_error((image.fileName() + ": " + image.errorString()).toStdString());
}

UnitMemory loadState(const QString &file)
{
    UnitMemory memory{archive::load(file).content, {}};
    QFile image(firmwareFile(file));
    if (!image.exists()) return memory;
    // An image that is there must not be taken for none: the next save would remove it.
    if (!image.open(QIODevice::ReadOnly))
        throw std::runtime_error((image.fileName() + ": " + image.errorString()).toStdString());
    const QByteArray bytes = image.readAll();
    memory.firmware.assign(bytes.begin(), bytes.end());
    return memory;
}
