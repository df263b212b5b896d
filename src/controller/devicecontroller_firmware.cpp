#include "controller/devicecontroller.h"
#include "device/kora.h"
#include "protocol/failure.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// What a file holds, but never more than one byte over what an image can have.
std::vector<unsigned char> readImage(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) fail(file.errorString().toStdString());
    if (file.size() > static_cast<qint64>(KORA::maxFirmwareSize)) fail("The firmware image is too large");
    const QByteArray content = file.read(KORA::maxFirmwareSize + 1);
    if (file.error() != QFileDevice::NoError) fail(file.errorString().toStdString());
    return {content.begin(), content.end()};
}

}  // namespace

void DeviceController::updateFirmware(const QString &path)
{
    if (!requireUnit()) return;
    if (!QFileInfo(path).isFile()) return tellFailure(QStringLiteral("File doesn't exist"));
    const auto failed = caught([&] {
        int shownPercent = -1;
        device->installFirmware(readImage(path), [&](int sent, int total) {
            const int percent = 100 * sent / total;
            if (percent > shownPercent) emit updateProgress(shownPercent = percent);
        });
        emit updateComplete();
    });
    if (!failed) return;
    qDebug("%s", failed->c_str());
    emit updateFailed();
}
