// Work on a file instead of a unit: from the menu to the bytes of the file, and back.

#include "app/fileunit.h"
#include "archive/unitfile.h"
#include "model/differences.h"
#include "ui/editor.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QTemporaryDir>

namespace {

class WorkOnFile : public Editor
{
protected:
    WorkOnFile() : Editor(musicianContent(), {100, 150, 20}, makeFileUnit) {}

    QAction &entry(const QString &text) const
    {
        for (QAction *const action : window.findChildren<QAction *>())
            if (action->text() == text) return *action;
        throw std::runtime_error("no entry " + text.toStdString());
    }

    /// The file dialog that opens next gets `file`.
    void onFileDialog(const QString &file)
    {
        onDialog([file](QWidget &dialog) {
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(file);
            static_cast<QDialog &>(dynamic_cast<QFileDialog &>(dialog)).done(QDialog::Accepted);
        });
    }

    void workOn(const QString &file)
    {
        onFileDialog(file);
        entry("WORK ON A FILE...").trigger();
        ASSERT_TRUE(becomes([this] { return status() == "WORKING ON gig.kora"; }) && settles());
    }

    void backToUnit()
    {
        entry("BACK TO THE UNIT").trigger();
        ASSERT_TRUE(becomes([this] { return isConnected(); }) && settles());
    }

    static void clickOn(const QMessageBox &box, const QString &button)
    {
        for (QAbstractButton *const each : box.buttons())
            if (each->text() == button) return each->click();
        ADD_FAILURE() << "no button " << button.toStdString();
    }

    /// Answers the next box by the button with that text; what the box says.
    std::shared_ptr<QString> onBox(const QString &button)
    {
        return nextBox([button](QMessageBox &box) { clickOn(box, button); });
    }

    static std::string nameIn(const QString &file) { return archive::load(file).content.banks[0].name; }
    void name(const QString &text) { type(edit("footswitchFunction", 1, 3), text); }
    bool isNamed(const char *text) const
    {
        return becomes([&] { return nameIn(path) == text; });
    }
    bool becomesUnsaved() const
    {
        return becomes([this] { return find<QLabel>("label_deviceFirmware").text() == "NOT SAVED"; });
    }

    QTemporaryDir folder;
    QString path = QDir(folder.path()).filePath("sub/gig.kora");
};

TEST_F(WorkOnFile, ChangesGoToTheFileAndNothingToTheUnit)
{
    const UnitContent unitsContent = unit.memory();
    UnitContent content = unitsContent;
    content.banks[0].name = "OF THE FILE";
    QDir(folder.path()).mkdir("sub");
    archive::save(path, {content, allRecords()});
    click("pushButton_settingsTab");
    ASSERT_TRUE(settles());
    workOn(path);
    EXPECT_EQ(edit("footswitchFunction", 1, 3).text(), "OF THE FILE");
    EXPECT_FALSE(entry("FIRMWARE UPGRADE").isEnabled());
    requests();

    choose(find<ComboBox>("comboBox_keyboardType"), "AZERTY");
    click("pushButton_presetsTab");
    name("A");
    ASSERT_TRUE(isNamed("A"));
    QElapsedTimer pause;
    pause.start();
    name("B");
    ASSERT_TRUE(isNamed("B"));
    EXPECT_GE(pause.elapsed(), 500) << "at most one save a second";
    click("pushButton_undo");
    content.banks[0].name = "A";
    content.settings.keyboardType = KeyboardType::Azerty;
    ASSERT_TRUE(isNamed("A"));
    EXPECT_TRUE(differences(archive::load(path).content, content, allRecords()).empty());

    EXPECT_EQ(requests(), Requests{}) << "units are not searched for";
    name("LAST");
    backToUnit();
    EXPECT_EQ(nameIn(path), "LAST") << "saved before it is left";
    EXPECT_TRUE(entry("FIRMWARE UPGRADE").isEnabled());
    EXPECT_FALSE(find<QPushButton>("pushButton_undo").isEnabled()) << "the steps were the file's";
    EXPECT_EQ(edit("footswitchFunction", 1, 3).text().toStdString(), unitsContent.banks[0].name);
    EXPECT_EQ(static_cast<UnitContent>(unit.memory()), unitsContent);
}

TEST_F(WorkOnFile, ABankStaysABankAndANewFileIsEmpty)
{
    unit.unplug();
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return status() == "DEVICE DISCONNECTED"; }));
    QDir(folder.path()).mkdir("sub");
    archive::save(path, {musicianContent(), recordsOfBank(0)});
    workOn(path);
    EXPECT_EQ(cell<QPushButton>("midi", 1, 4).text(), "") << "MIDI devices are empty";
    EXPECT_EQ(find<QLabel>("label_deviceFirmware").text(), "");
    click("pushButton_presetsTab");
    name("A");
    ASSERT_TRUE(isNamed("A"));
    EXPECT_EQ(archive::load(path).records, recordsOfBank(0));

    onFileDialog(folder.filePath("sub/new"));
    entry("NEW FILE...").trigger();
    ASSERT_TRUE(becomes([this] { return status() == "WORKING ON new.kora"; }) && settles());
    EXPECT_EQ(edit("footswitchFunction", 1, 3).text(), "");
    EXPECT_EQ(archive::load(folder.filePath("sub/new.kora")).content, emptyContent());
    EXPECT_FALSE(find<QPushButton>("pushButton_undo").isEnabled());
    const auto told = nextBox();
    window.workOn(folder.filePath("none.kora"));
    EXPECT_TRUE(told->startsWith("Error|none.kora: ")) << told->toStdString();
    EXPECT_EQ(status(), "WORKING ON new.kora");
    unit.plugIn();
    backToUnit();
}

TEST_F(WorkOnFile, WhatAnotherProgramWroteIsNotOverwritten)
{
    QDir(folder.path()).mkdir("sub");
    UnitPart foreign{musicianContent(), recordsOfBank(0)};
    archive::save(path, foreign);
    workOn(path);
    const auto collide = [&](const char *othersName, const char *ownName, const QString &answer) {
        foreign.content.banks[0].name = othersName;
        archive::save(path, foreign);
        const auto told = onBox(answer);
        name(ownName);
        EXPECT_TRUE(becomes([&] { return !told->isEmpty(); }) && settles());
        EXPECT_TRUE(told->startsWith("FILE CHANGED|Another program has changed gig.kora.")) << told->toStdString();
    };
    collide("THEIRS", "OURS", "Later");
    EXPECT_TRUE(becomesUnsaved());
    EXPECT_EQ(nameIn(path), "THEIRS");
    onBox("Overwrite");
    click("pushButton_connection");
    EXPECT_EQ(nameIn(path), "OURS");

    collide("THEIRS AGAIN", "OURS AGAIN", "Reload");
    ASSERT_TRUE(becomes([this] { return edit("footswitchFunction", 1, 3).text() == "THEIRS AGAIN"; }) && settles());

    onFileDialog(folder.filePath("sub/elsewhere.kora"));
    collide("THEIRS", "ELSEWHERE", "Save elsewhere...");
    EXPECT_TRUE(becomes([this] { return status() == "WORKING ON elsewhere.kora"; }));
    EXPECT_EQ(nameIn(path), "THEIRS");
    EXPECT_EQ(nameIn(folder.filePath("sub/elsewhere.kora")), "ELSEWHERE");
    EXPECT_TRUE(find<QPushButton>("pushButton_undo").isEnabled()) << "the same work goes on";
}

TEST_F(WorkOnFile, WhatCannotBeSavedIsKeptAndClosingAsks)
{
    QDir(folder.path()).mkdir("sub");
    archive::save(path, {musicianContent(), recordsOfBank(0)});
    workOn(path);
    ASSERT_TRUE(QDir(folder.filePath("sub")).removeRecursively());
    const auto told = onBox("Later");
    name("A");
    ASSERT_TRUE(becomes([&] { return !told->isEmpty(); }));
    EXPECT_TRUE(told->startsWith("NOT SAVED|gig.kora: ")) << told->toStdString();
    name("B");  // is not told again
    EXPECT_TRUE(becomesUnsaved() && settles());
    EXPECT_EQ(edit("footswitchFunction", 1, 3).text(), "B");
    onBox("Cancel");
    window.close();
    onBox("Cancel");
    entry("BACK TO THE UNIT").trigger();
    EXPECT_TRUE(window.isVisible() && status() == "WORKING ON gig.kora");

    const auto stickIsBack = [this] {
        QDir(folder.path()).mkdir("sub");
        archive::save(path, {emptyContent(), recordsOfBank(0)});
    };
    nextBox([stickIsBack](QMessageBox &box) {
        stickIsBack();
        clickOn(box, "Try again");
    });
    const auto changed = onBox("Overwrite");
    click("pushButton_connection");
    EXPECT_TRUE(changed->startsWith("FILE CHANGED|")) << changed->toStdString();
    EXPECT_TRUE(isNamed("B"));
    name("C");
    EXPECT_TRUE(isNamed("C"));
    EXPECT_TRUE(becomes([this] { return find<QLabel>("label_deviceFirmware").text() != "NOT SAVED"; }));
    ASSERT_TRUE(QDir(folder.filePath("sub")).removeRecursively());
    name("D");
    onBox("Go on without saving");
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_FALSE(QFile::exists(path));
}

}  // namespace
