// Work on a file instead of a unit: from the menu to the bytes of the file, and back.

#include "app/fileunit.h"
#include "archive/unitfile.h"
#include "model/differences.h"
#include "ui/editor.h"

#include <QDir>
#include <QTemporaryDir>

namespace {

class WorkOnFile : public Editor
{
protected:
    WorkOnFile() : Editor(musicianContent(), patientTimeouts, makeFileUnit) {}

    void workOn(const UnitPart &part)
    {
        QDir(folder.path()).mkdir("stick");
        archive::save(path, part);
        trigger("WORK ON A FILE...", path);
        ASSERT_TRUE(becomes([this] { return status() == "WORKING ON gig.kora"; }) && settles());
    }

    /// Answers the next box by the button with that text; what the box says.
    std::shared_ptr<QString> onBox(const QString &button, const std::function<void()> &before = {})
    {
        return nextBox([=](QMessageBox &box) {
            if (before) before();
            const auto buttons = box.buttons();
            const auto found = std::ranges::find(buttons, button, &QAbstractButton::text);
            ASSERT_NE(found, buttons.end()) << box.text().toStdString();
            (*found)->click();
        });
    }

    static std::string nameIn(const QString &file) { return archive::load(file).content.banks[0].name; }
    QString shownName() const { return edit("footswitchFunction", 1, 3).text(); }
    void name(const QString &text) { type(edit("footswitchFunction", 1, 3), text); }
    bool isNamed(const char *text) const
    {
        return becomes([&] { return nameIn(path) == text; });
    }
    void saveTheirs(const char *bankName)
    {
        bank.content.banks[0].name = bankName;
        QDir(folder.path()).mkdir("stick");
        archive::save(path, bank);
    }
    bool isUnsaved() const { return find<QLabel>("label_deviceFirmware").text() == "NOT SAVED"; }

    QTemporaryDir folder;
    QString path = folder.filePath("stick/gig.kora");
    UnitPart bank{musicianContent(), recordsOfBank(0)};
};

TEST_F(WorkOnFile, ChangesGoToTheFileAndNothingToTheUnit)
{
    const UnitContent unitsContent = unit.memory();
    UnitContent content = unitsContent;
    content.banks[0].name = "OF THE FILE";
    workOn({content, allRecords()});
    EXPECT_EQ(shownName(), "OF THE FILE");
    EXPECT_EQ(find<QLabel>("label_deviceStatus").toolTip(), path);
    const QPushButton &connection = find<QPushButton>("pushButton_connection");
    EXPECT_EQ(connection.accessibleName(), "A file is worked on");
    EXPECT_FALSE(entry("FIRMWARE UPGRADE").isEnabled());
    requests();

    QElapsedTimer pause;
    pause.start();
    name("A");
    ASSERT_TRUE(isNamed("A"));
    name("B");
    ASSERT_TRUE(isNamed("B"));
    EXPECT_GE(pause.elapsed(), 1000) << "at most one save a second";
    click("pushButton_undo");
    content.banks[0].name = "A";
    ASSERT_TRUE(isNamed("A"));
    EXPECT_TRUE(differences(archive::load(path).content, content, allRecords()).empty());

    EXPECT_EQ(requests(), Requests{}) << "units are not searched for";
    name("LAST");
    trigger("BACK TO THE UNIT");
    ASSERT_TRUE(becomes([this] { return isConnected(); }) && settles());
    EXPECT_EQ(nameIn(path), "LAST") << "saved before it is left";
    EXPECT_EQ(connection.accessibleName(), "The unit is connected");
    EXPECT_TRUE(entry("FIRMWARE UPGRADE").isEnabled());
    EXPECT_FALSE(find<QPushButton>("pushButton_undo").isEnabled()) << "the steps were the file's";
    EXPECT_EQ(static_cast<UnitContent>(unit.memory()), unitsContent);
}

TEST_F(WorkOnFile, ANewFileIsEmptyAndNeedsNoUnit)
{
    unit.unplug();
    click("pushButton_settingsTab");
    ASSERT_TRUE(becomes([this] { return status() == "DEVICE DISCONNECTED"; }));
    trigger("NEW FILE...", folder.filePath("new"));
    ASSERT_TRUE(becomes([this] { return status() == "WORKING ON new.kora"; }) && settles());
    EXPECT_EQ(shownName() + find<QLabel>("label_deviceFirmware").text(), "");
    EXPECT_EQ(archive::load(folder.filePath("new.kora")).content, emptyContent());
    nextBox();
    window.workOn(folder.filePath("none.kora"));
    EXPECT_EQ(status(), "WORKING ON new.kora");
}

TEST_F(WorkOnFile, WhatAnotherProgramWroteIsNotOverwritten)
{
    workOn(bank);
    const auto collide = [&](const char *othersName, const char *ownName, const QString &answer) {
        saveTheirs(othersName);
        const auto told = onBox(answer);
        name(ownName);
        EXPECT_TRUE(becomes([&] { return !told->isEmpty(); }) && settles());
        EXPECT_TRUE(told->startsWith("FILE CHANGED|Another program has changed gig.kora.")) << told->toStdString();
    };
    collide("THEIRS", "OURS", "Later");
    EXPECT_TRUE(isUnsaved());
    EXPECT_EQ(nameIn(path), "THEIRS");
    onBox("Overwrite");
    click("pushButton_connection");
    EXPECT_EQ(nameIn(path), "OURS");
    collide("THEIRS AGAIN", "OURS AGAIN", "Reload");
    ASSERT_TRUE(becomes([this] { return shownName() == "THEIRS AGAIN"; }) && settles());
    onFileDialog(folder.filePath("stick/elsewhere.kora"));
    collide("THEIRS", "ELSEWHERE", "Save elsewhere...");
    EXPECT_TRUE(becomes([this] { return status() == "WORKING ON elsewhere.kora"; }));
    EXPECT_EQ(nameIn(path), "THEIRS");
    EXPECT_EQ(nameIn(folder.filePath("stick/elsewhere.kora")), "ELSEWHERE");
    EXPECT_TRUE(find<QPushButton>("pushButton_undo").isEnabled()) << "the same work goes on";
}

TEST_F(WorkOnFile, WhatCannotBeSavedIsKeptAndClosingAsks)
{
    workOn(bank);
    QDir stick(folder.filePath("stick"));
    ASSERT_TRUE(stick.removeRecursively());
    const auto told = onBox("Later");
    name("A");
    ASSERT_TRUE(becomes([&] { return !told->isEmpty(); }));
    EXPECT_TRUE(told->startsWith("NOT SAVED|gig.kora: ")) << told->toStdString();
    name("B");  // is not told again
    EXPECT_TRUE(settles() && isUnsaved());
    onBox("Cancel");
    window.close();
    EXPECT_TRUE(window.isVisible() && status() == "WORKING ON gig.kora" && shownName() == "B");

    onBox("Try again", [&] { saveTheirs("THEIRS"); });
    const auto changed = onBox("Overwrite");
    click("pushButton_connection");
    EXPECT_TRUE(changed->startsWith("FILE CHANGED|")) << changed->toStdString();
    EXPECT_TRUE(isNamed("B") && !isUnsaved());
    ASSERT_TRUE(stick.removeRecursively());
    const auto toldAgain = onBox("Later");
    name("C");
    ASSERT_TRUE(becomes([&] { return !toldAgain->isEmpty(); }));
    onBox("Go on without saving");
    window.close();
    EXPECT_FALSE(window.isVisible() || QFile::exists(path));
}

}  // namespace
