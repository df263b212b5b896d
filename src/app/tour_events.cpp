#include "app/gestures.h"
#include "app/tour.h"
#include "ui/shell/mainwindow.h"
#include "unit/firmwareupload.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

using namespace gestures;

// --- What goes wrong, and the windows around

void Tour::refusedChange()
{
    unit.queueFault(Fault::errorStatus(42, "The unit is <b>locked</b>"), 1);  // the first exchange reads the page
    click("pushButton_settingsTab");
    const KeyboardType before = unit.memory().settings.keyboardType;
    withDialog([&] { choose("comboBox_keyboardType", QStringLiteral("QWERTY")); },
               [&](QWidget &dialog) {
                   auto *const box = qobject_cast<QMessageBox *>(&dialog);
                   check(QStringLiteral("a refused change shows the unit's own text, as plain text"), [&] {
                       return box && box->text() == "The unit is <b>locked</b>" && box->textFormat() == Qt::PlainText;
                   });
                   picture(QStringLiteral("refused"), &dialog);
                   clickOn(*box->button(QMessageBox::Ok));
               });
    checkUnit(QStringLiteral("a refused change changes nothing"),
              [&](const UnitMemory &memory) { return memory.settings.keyboardType == before; });
}

void Tour::informationWindows()
{
    withDialog([&] { click("pushButton_logo"); },
               [&](QWidget &dialog) {
                   picture(QStringLiteral("about"), &dialog);
                   clickOn(find<QPushButton>(dialog, "pushButton_closeWindow"));
               });
}

void Tour::firmwareUpload()
{
    QFile image(pictures.filePath(QStringLiteral("firmware.bin")));
    const QByteArray content(60000, '\x5A');
    check(QStringLiteral("a firmware image is made"),
          [&] { return image.open(QIODevice::WriteOnly) && image.write(content) == content.size(); });
    image.close();

    const auto chooseUpgrade = [this] {
        click("pushButton_menu");
        QWidget *const menu = QApplication::activePopupWidget();
        picture(QStringLiteral("menu"), menu);
        key(*menu, Qt::Key_Down);
        key(*menu, Qt::Key_Return);
    };
    withDialog(chooseUpgrade, chooseFile(image.fileName()));
    picture(QStringLiteral("upload"));
    withDialog([] {},
               [&](QWidget &dialog) {
                   auto *const box = qobject_cast<QMessageBox *>(&dialog);
                   check(QStringLiteral("the upload completes"),
                         [&] { return box && box->windowTitle() == "UPLOAD COMPLETE"; });
                   picture(QStringLiteral("upload-complete"), &dialog);
                   clickOn(*box->button(QMessageBox::Ok));
               });
    checkUnit(QStringLiteral("the unit holds the image"), [&](const UnitMemory &memory) {
        return std::equal(memory.firmware.begin(), memory.firmware.end(), content.begin(), content.end(),
                          [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); });
    });

    // The unit restarts and does not answer; the editor notices, searches and finds it with its new version.
    const FirmwareVersion version = firmwareVersion(std::vector<std::uint8_t>(content.begin(), content.end()));
    click("pushButton_settingsTab");
    check(QStringLiteral("the unit comes back with the new version"), [&] {
        return find<QLabel>(window, "label_deviceFirmware").text() ==
               QStringLiteral("FIRMWARE %1.%2").arg(version.major).arg(version.minor);
    });
}

void Tour::lostUnit()
{
    auto &status = find<QLabel>(window, "label_deviceStatus");
    unit.unplug();
    click("pushButton_settingsTab");
    check(QStringLiteral("a unit that vanishes is noticed, without a box"),
          [&] { return status.text() == "DEVICE DISCONNECTED" && !QApplication::activeModalWidget(); });
    picture(QStringLiteral("disconnected"));
    withDialog([&] { click("pushButton_connection"); },
               [&](QWidget &dialog) {
                   picture(QStringLiteral("drivers"), &dialog);
                   clickOn(find<QPushButton>(dialog, "pushButton_closeWindow"));
               });
    unit.plugIn();
    check(QStringLiteral("a unit that comes back is found"), [&] { return status.text() == "DEVICE CONNECTED"; });
}
