// Backup, restore, compare and clear, from the menu to the unit.

#include "archive/unitfile.h"
#include "controller/safetycopies.h"
#include "model/differences.h"
#include "ui/editor.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace {

class Files : public Editor
{
protected:
    Files()
    {
        unit.alter([](UnitMemory &memory) { memory.expressionPedal.onTheFlyMode = false; });  // is never reported
        QDir(SafetyCopies::usualFolder()).removeRecursively();
    }

    /// Answers the dialog of differences after `act`; what its label says.
    std::shared_ptr<QString> onDifferences(const char *button, const std::function<void(QTreeWidget &)> &act = {})
    {
        auto summary = std::make_shared<QString>();
        onDialog([=](QWidget &dialog) {
            EXPECT_EQ(dialog.objectName(), "DifferencesDialog");
            *summary = dialog.findChild<QLabel *>("label_summary")->text();
            if (act) act(*dialog.findChild<QTreeWidget *>("treeWidget_differences"));
            dialog.findChild<QPushButton *>(button)->click();
        });
        return summary;
    }

    QString backUp(const QString &entry, const QString &name)
    {
        const auto told = nextBox();
        trigger(entry, folder.filePath(name));
        EXPECT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
        EXPECT_TRUE(told->startsWith("BACKUP COMPLETE|")) << told->toStdString();
        return folder.filePath(name);
    }

    UnitContent content() const { return unit.memory(); }

    QTemporaryDir folder;
};

}  // namespace

TEST_F(Files, ABackupHoldsEverythingAndARestoreProvesIt)
{
    const UnitContent before = content();
    const QString path = backUp("WHOLE UNIT...", "unit.kora");
    EXPECT_EQ(archive::load(path).content, before);
    EXPECT_EQ(archive::load(path).records, allRecords());

    unit.alter([](UnitMemory &memory) {
        memory.banks[3].name = "CHANGED";
        memory.presets[4][5].loops[1] = LoopType::Toggle;
        memory.presets[4][5].controlChanges = {{1, 7, 99}};
        memory.midiDevices[2].channel = 9;
        memory.settings.keyboardType = KeyboardType::Azerty;
    });
    const UnitContent changed = content();
    unit.takeRequests();
    const auto told = nextBox();
    trigger("FROM FILE...", path);
    const auto summary = onDifferences("pushButton_restore", [](QTreeWidget &tree) {
        EXPECT_EQ(tree.topLevelItemCount(), 3);
        const auto check = [&](const QString &parts, Qt::CheckState state) {
            for (int part = 0; part < tree.topLevelItemCount(); ++part)
                if (tree.topLevelItem(part)->text(0).contains(parts)) tree.topLevelItem(part)->setCheckState(0, state);
        };
        const auto *const restore = tree.window()->findChild<QPushButton *>("pushButton_restore");
        check("", Qt::Unchecked);
        EXPECT_TRUE(becomes([&] { return !restore->isEnabled(); }));
        check("", Qt::Checked);
        EXPECT_TRUE(becomes([&] { return restore->isEnabled(); }));
        check("MIDI DEVICES", Qt::Unchecked);
        QStringList groups;
        for (QTreeWidgetItemIterator each(&tree, QTreeWidgetItemIterator::HasChildren); *each; ++each)
            if ((*each)->isExpanded()) groups << (*each)->text(0);
        EXPECT_EQ(groups.join('|'), "GLOBAL SETTINGS|MIDI DEVICES|MIDI DEVICE 3|BANKS|BANK 3|BANK 4");
    });
    ASSERT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
    EXPECT_TRUE(summary->contains(" in 2 banks, 1 MIDI device, global settings")) << summary->toStdString();
    EXPECT_TRUE(told->startsWith("RESTORE COMPLETE|")) << told->toStdString();
    UnitContent expected = before;
    expected.midiDevices[2].channel = 9;  // was not checked
    EXPECT_EQ(content(), expected);
    const Requests sent = taken();
    EXPECT_LE(std::count_if(sent.begin(), sent.end(), [](const auto &text) { return text[0] == 'W'; }), 4);
    EXPECT_EQ(find<QComboBox>("comboBox_keyboardType").currentText(), "QWERTY") << "the pages show it";

    const QStringList copies = SafetyCopies().newestFirst();
    ASSERT_EQ(copies.size(), 1);
    EXPECT_EQ(archive::load(copies.front()).content, changed);
    trigger("COMPARE WITH FILE...", path);
    const auto compared = onDifferences("pushButton_cancel", [](QTreeWidget &tree) {
        EXPECT_FALSE(tree.window()->findChild<QPushButton *>("pushButton_restore"));
    });
    ASSERT_TRUE(becomes([&] { return !compared->isEmpty() && settles(); }));
    EXPECT_TRUE(compared->startsWith("1 value")) << compared->toStdString();
}

TEST_F(Files, ABankIsExportedClearedAndPutBack)
{
    for (const MidiLists lists : {MidiLists::Replace, MidiLists::Merge}) {
        unit.setMidiLists(lists);
        unit.alter([](UnitMemory &memory) {
            memory.presets[0][7].expressionPedal = {1, 4, ExpressionPedalCharacteristic::Linear, 0, 127};
        });
        const UnitContent before = content();
        const QString path = backUp("THIS BANK...", "bank.kora");
        EXPECT_EQ(archive::load(path).records, recordsOfBank(0));
        for (const char *const entry : {"CLEAR THIS BANK...", "FROM FILE..."}) {
            const UnitContent held = content();
            const auto told = nextBox();
            trigger(entry, QString(entry) == "FROM FILE..." ? path : QString());
            onDifferences("pushButton_restore");
            ASSERT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
            EXPECT_TRUE(told->startsWith("RESTORE COMPLETE|")) << told->toStdString();
            const UnitContent copy = archive::load(SafetyCopies().newestFirst().front()).content;
            EXPECT_TRUE(differences(copy, held, allRecords()).empty()) << "also of two copies in one second";
            UnitContent expected = before;
            if (QString(entry) == "CLEAR THIS BANK...") {
                expected.banks[0] = BankData();
                expected.presets[0].fill(PresetData());
            }
            EXPECT_TRUE(differences(content(), expected, allRecords()).empty()) << entry;
            EXPECT_EQ(edit("loops", 3, 3).text().toStdString(), expected.presets[0][2].name);
        }
    }
}

TEST_F(Files, ATransferCanBeStoppedAndARefusalIsTold)
{
    unit.setDelay(std::chrono::milliseconds(5));
    trigger("CLEAR WHOLE UNIT...");
    EXPECT_TRUE(find<QLabel>("label_transfer").isVisible());
    auto &progress = *window.findChild<QObject *>("progressBar_transfer");
    ASSERT_TRUE(becomes([&] { return progress.property("value").toInt() > 3; }));
    EXPECT_FALSE(find<QWidget>("widget_presets").isEnabled());
    click("pushButton_cancelTransfer");
    ASSERT_TRUE(settles());
    EXPECT_FALSE(find<QLabel>("label_transfer").isVisible());
    EXPECT_TRUE(find<QWidget>("widget_presets").isEnabled());
    unit.setDelay(std::chrono::milliseconds(0));

    const UnitContent before = content();
    unit.queueFault(Fault::errorStatus(9, "Not today"), allRecords().size() + 1);
    const auto told = nextBox();
    trigger("CLEAR THIS BANK...");
    onDifferences("pushButton_restore");
    ASSERT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
    EXPECT_TRUE(told->startsWith("RESTORE INCOMPLETE|Not today\n")) << told->toStdString();
    EXPECT_TRUE(differences(before, content(), allRecords()).size() == 1U) << "the first exchange was accepted";
}

TEST_F(Files, AFileThatIsNoBackupIsToldBeforeAnythingIsRead)
{
    const QString path = folder.filePath("bad.kora");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("{\"format\": \"kora-unit\", \"version\": 2}") > 0);
    file.close();
    unit.takeRequests();
    for (const char *const entry : {"FROM FILE...", "COMPARE WITH FILE..."}) {
        const auto told = nextBox();
        trigger(entry, path);
        ASSERT_TRUE(becomes([&] { return !told->isEmpty(); }));
        EXPECT_TRUE(told->startsWith("Error|")) << told->toStdString();
        EXPECT_EQ(requests(), Requests{}) << entry;
    }
}

TEST(SafetyCopies, TheNewestTwentyAreKept)
{
    const QTemporaryDir folder;
    const SafetyCopies copies(folder.path());
    const QDateTime midnight({2026, 1, 31}, {0, 0});
    for (int second = 0; second <= 20; ++second)
        EXPECT_EQ(copies.save({{}, recordsOfBank(0)}, midnight.addSecs(second)).toStdString(), "");
    const QStringList left = copies.newestFirst();
    EXPECT_EQ(left.size(), 20);
    EXPECT_TRUE(left.front().contains("-000020-"));
    EXPECT_TRUE(left.back().contains("-000001-"));
}
