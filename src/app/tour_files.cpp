#include "app/gestures.h"
#include "app/tour.h"
#include "controller/safetycopies.h"
#include "model/differences.h"
#include "ui/shell/mainwindow.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

using namespace gestures;

void Tour::files()
{
    const UnitContent before = unit.memory();
    const auto holdsAsBefore = [&](const UnitMemory &memory) {
        return differences(memory, before, allRecords()).empty();
    };
    const QString file = pictures.filePath(QStringLiteral("unit.kora"));
    withDialogs([&] { trigger("WHOLE UNIT..."); }, {chooseFile(file), closeBox(QStringLiteral("BACKUP COMPLETE"))});

    click("pushButton_presetsTab");
    click("pushButton_footswitchFunctionTab");
    type(cell<QLineEdit>(window, "tableWidget_footswitchFunction", 1, 0), QStringLiteral("7"));
    check(QStringLiteral("bank 7 is shown"),
          [&] { return cell<QLineEdit>(window, "tableWidget_footswitchFunction", 1, 3).text() == "Fête d'été"; });
    type(cell<QLineEdit>(window, "tableWidget_footswitchFunction", 2, 4), QStringLiteral("A SLIP"));
    checkUnit(QStringLiteral("preset 1 of bank 7 is renamed"),
              [](const UnitMemory &memory) { return memory.presets[7][1].name == "A SLIP"; });
    click("pushButton_settingsTab");
    choose("comboBox_clickProtection", QStringLiteral("LOW"));
    checkUnit(QStringLiteral("click protection LOW"),
              [](const UnitMemory &memory) { return memory.settings.clickProtection == ClickProtection::Low; });

    const QString twoValues = QStringLiteral("2 values differ in 1 bank, global settings");
    withDialogs([&] { trigger("COMPARE WITH FILE..."); },
                {chooseFile(file), answerDifferences(QStringLiteral("compare"), "pushButton_cancel", twoValues)});
    withDialogs([&] { trigger("FROM FILE..."); },
                {chooseFile(file), answerDifferences(QStringLiteral("restore"), "pushButton_restore", twoValues),
                 closeBox(QStringLiteral("RESTORE COMPLETE"))});
    checkUnit(QStringLiteral("the unit holds what it held before"), holdsAsBefore);

    withDialogs([&] { trigger("CLEAR THIS BANK..."); },
                {answerDifferences(QStringLiteral("clear"), "pushButton_restore"),
                 closeBox(QStringLiteral("RESTORE COMPLETE"))});
    checkUnit(QStringLiteral("bank 7 is empty"), [](const UnitMemory &memory) {
        return memory.banks[7] == BankData() && memory.presets[7][1] == PresetData();
    });
    withDialogs([&] { trigger("BEFORE THE LAST RESTORE..."); },
                {chooseFile(SafetyCopies().newestFirst().constFirst()),
                 answerDifferences(QStringLiteral("safety-copy"), "pushButton_restore"),
                 closeBox(QStringLiteral("RESTORE COMPLETE"))});
    checkUnit(QStringLiteral("bank 7 is back"), holdsAsBefore);
}

void Tour::trigger(const char *entry)
{
    for (QAction *const action : window.findChildren<QAction *>())
        if (action->text() == QLatin1String(entry)) action->trigger();
}

Tour::Act Tour::chooseFile(const QString &path)
{
    return [path](QWidget &dialog) {
        auto &name = find<QLineEdit>(dialog, "fileNameEdit");
        name.setText(path);
        key(name, Qt::Key_Return);
    };
}

Tour::Act Tour::answerDifferences(const QString &name, const char *button, const QString &summary)
{
    return [=, this](QWidget &dialog) {
        const QString told = find<QLabel>(dialog, "label_summary").text();
        check(QStringLiteral("the dialog says: ") + told, [&] { return told.startsWith(summary); });
        picture(name, &dialog);
        clickOn(find<QPushButton>(dialog, button));
    };
}

Tour::Act Tour::closeBox(const QString &title)
{
    return [=, this](QWidget &dialog) {
        auto *const box = qobject_cast<QMessageBox *>(&dialog);
        check(title, [&] { return box && box->windowTitle() == title; });
        clickOn(*box->button(QMessageBox::Ok));
    };
}
