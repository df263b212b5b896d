#include "archive/unitfile.h"
#include "ui/editor.h"
#include "ui/preview/previewwidget.h"

#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QTemporaryDir>

namespace {

class PlaceMenus : public Editor
{
protected:
    /// Opens a menu by `ask` and takes one of its entries; what it is about and offers then: "BANK 7: COPY PASTE".
    QString choose(const QString &entry, const std::function<void()> &ask)
    {
        QString heading;
        QStringList offered;
        QTimer::singleShot(0, &window, [&] {
            auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            heading = menu->actions().front()->text();
            QAction *chosen = nullptr;
            for (QAction *const action : menu->actions()) {
                if (action->isSeparator()) continue;
                if (action->isEnabled()) offered << action->text();
                if (action->text() == entry) chosen = action;
            }
            if (chosen) expectLit(*menu, chosen);
            QTest::keyClick(menu, chosen ? Qt::Key_Return : Qt::Key_Escape);
        });
        ask();
        EXPECT_TRUE(settles());
        return heading + ": " + offered.join(' ');
    }
    /// By a right click on the cell of a table.
    QString onCell(const QString &entry, const QString &table, int row, int column)
    {
        auto &widget = cell<QWidget>(table, row, column);
        const QPoint center = widget.rect().center();
        QContextMenuEvent ask(QContextMenuEvent::Mouse, center, widget.mapToGlobal(center));
        return choose(entry, [&] { QApplication::sendEvent(&widget, &ask); });
    }
    UnitContent held() const { return unit.memory(); }
};

}  // namespace

TEST_F(PlaceMenus, RowsCopyPasteSwapAndClearBanksAndPresets)
{
    const UnitContent start = held();
    const auto &presets = start.presets[0];
    QApplication::clipboard()->setText("no presets");
    EXPECT_EQ(onCell({}, "footswitchFunction", 1, 2), "BANK 0, PRESET 0: COPY CLEAR");
    click("pushButton_loopsTab");
    onCell("COPY", "loops", 3, 3);
    EXPECT_EQ(archive::fromJson(QApplication::clipboard()->text().toUtf8()).content.presets[0][2], presets[2]);
    EXPECT_EQ(onCell({}, "loops", 3, 1), "BANK 0, PRESET 2: COPY PASTE CLEAR")
        << "a preset does not change places with itself";
    unit.takeRequests();
    onCell("PASTE", "loops", 6, 7);
    EXPECT_EQ(held().presets[0][5], presets[2]);
    EXPECT_EQ(edit("loops", 6, 3).text().toStdString(), presets[2].name);
    click("pushButton_undo");
    ASSERT_TRUE(settles());
    EXPECT_TRUE(held() == start);
    onCell("SWAP", "loops", 6, 1);
    EXPECT_EQ(held().presets[0][5], presets[2]);
    EXPECT_EQ(held().presets[0][2], presets[5]);

    auto question = nextBox(QMessageBox::No);
    onCell("CLEAR", "loops", 6, 1);
    EXPECT_EQ(*question, "CLEAR|CLEAR BANK 0, PRESET 5?");
    EXPECT_EQ(held().presets[0][5], presets[2]);
    question = nextBox(QMessageBox::Yes);
    onCell("CLEAR", "loops", 6, 0);
    EXPECT_EQ(*question, "CLEAR|CLEAR BANK 0?");
    EXPECT_EQ(held().banks[0], BankData());
    EXPECT_EQ(held().presets[0][5], PresetData());
    click("pushButton_wahPads");
    EXPECT_EQ(onCell({}, "wahPads", 4, 1), "BANK 0: COPY PASTE CLEAR");
    click("pushButton_midiTab");
    EXPECT_EQ(onCell({}, "midi", 2, 4), "BANK 0, PRESET 1: COPY PASTE SWAP CLEAR");
}

TEST_F(PlaceMenus, TellsWhatIsWrongWithTheClipboardAndWhatWasNotMade)
{
    QApplication::clipboard()->setText("{\"format\": \"kora-unit\", \"version\": 1, \"banks\": 7}");
    auto told = nextBox();
    onCell("PASTE", "footswitchFunction", 1, 1);
    EXPECT_TRUE(told->startsWith("PASTE|The clipboard holds no presets: banks")) << told->toStdString();
    onCell("COPY", "footswitchFunction", 3, 1);
    told = nextBox();
    onCell("PASTE", "footswitchFunction", 6, 0);
    EXPECT_EQ(*told, "PASTE|The clipboard holds presets. Paste them over a preset.");
    onCell("COPY", "footswitchFunction", 1, 0);
    type(edit("footswitchFunction", 1, 0), "99");
    ASSERT_TRUE(settles());
    unit.queueFault(Fault::errorStatus(5, "Broken"), 15);
    told = nextBox();
    onCell("PASTE", "footswitchFunction", 1, 0);
    EXPECT_TRUE(told->startsWith("CHANGE INCOMPLETE|") && told->contains("Broken\n") &&
                told->contains("undo takes them back"))
        << told->toStdString();
}

TEST_F(PlaceMenus, AFootswitchOfThePreviewHasTheSameMenu)
{
    click("pushButton_previewTab");
    auto *const page = window.findChild<PreviewWidget *>();
    QApplication::clipboard()->clear();
    QTest::keyClick(page, Qt::Key_Right);
    EXPECT_EQ(choose("COPY", [&] { QTest::keyClick(page, Qt::Key_F10, Qt::ShiftModifier); }),
              "BANK 0, PRESET 1: COPY CLEAR SAVE PICTURE");
    const auto copied = archive::fromJson(QApplication::clipboard()->text().toUtf8());
    EXPECT_EQ(copied.records, (std::set<RecordId>{{RecordId::Kind::Preset, 0, 1}}));
}

TEST_F(PlaceMenus, AFileThatIsDroppedOnTheWindowIsRestoredFrom)
{
    QTemporaryDir folder;
    UnitPart part{held(), recordsOfBank(0)};
    part.content.banks[0].name = "DROPPED";
    archive::save(folder.filePath("bank.kora"), part);
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(folder.filePath("bank.kora"))});
    QString title;
    onDialog([&](QWidget &dialog) {
        title = dialog.objectName();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&edit("footswitchFunction", 1, 4), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&edit("footswitchFunction", 1, 4), &drop);
    EXPECT_TRUE(becomes([&] { return title == "DifferencesDialog"; })) << title.toStdString();
}
