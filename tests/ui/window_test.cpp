#include "link/connection.h"
#include "ui/dialogs/aboutwindow.h"
#include "ui/dialogs/installdriverswindow.h"
#include "ui/dialogs/midieditorwindow.h"
#include "ui/editor.h"
#include "ui/look.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QMenu>
#include <QTextBrowser>
#include <QWindow>

namespace {

class Window : public Editor
{
protected:
    Window()
    {
        unit.alter([](UnitMemory &memory) { memory.deviceInfo.firmwareMajor = 7; });
    }
    static Requests all(const std::string &start, int first, int last)
    {
        Requests expected;
        for (int number = first; number <= last; ++number)
            expected.push_back(start + std::to_string(number));
        return expected;
    }
    void loseUnit()
    {
        unit.unplug();
        click("pushButton_settingsTab");
        ASSERT_TRUE(becomes([this] { return !isConnected(); }));
    }
    void findUnit()
    {
        unit.plugIn();
        ASSERT_TRUE(becomes([this] { return isConnected() && settles(); }));
    }
    QImage icon(const char *button) const { return find<QPushButton>(button).icon().pixmap(36, 36).toImage(); }
};

const struct
{
    const char *button;
    const char *page;
    int x, width;
} pages[] = {{"pushButton_settingsTab", "widget_settings", 12, 100},
             {"pushButton_presetsTab", "widget_presets", 118, 100},
             {"pushButton_midiDevicesTab", "tableWidget_midiDevices", 224, 100},
             {"pushButton_midiMidiIn", "widget_midiIn", 330, 100},
             {"pushButton_midiExpressionPedal", "widget_expressionPedal", 436, 141},
             {"pushButton_midiSwitchOut", "widget_switchOut", 583, 100},
             {"pushButton_previewTab", "widget_preview", 689, 100},
             {"pushButton_libraryTab", "widget_library", 795, 100}};
const char *const subTabs[][2] = {{"pushButton_footswitchFunctionTab", "tableWidget_footswitchFunction"},
                                  {"pushButton_loopsTab", "tableWidget_loops"},
                                  {"pushButton_switchTab", "tableWidget_switch"},
                                  {"pushButton_midiTab", "tableWidget_midi"},
                                  {"pushButton_wahPads", "tableWidget_wahPads"}};

/// From the first row that is not transparent to the last one.
int inkHeight(const QImage &image)
{
    int first = image.height(), last = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 0) {
                first = std::min(first, y);
                last = y;
            }
    return last - first + 1;
}

}  // namespace

TEST_F(Window, ShowsTheUnitItsPagesAndOneOfTheirButtonsLit)
{
    const QString lit = "background-color: #525051", dark = "background-color: #404042";
    EXPECT_EQ(window.windowTitle(), "KORA");
    EXPECT_FALSE(window.windowIcon().isNull());
    EXPECT_EQ(window.windowFlags(), Qt::WindowFlags(0x2001801));
    EXPECT_EQ(window.size(), QSize(1322, 709));
    EXPECT_TRUE(find<QLabel>("label_deviceFirmware").text().startsWith("FIRMWARE 7."));
    EXPECT_TRUE(find<QWidget>("tableWidget_footswitchFunction").isVisible());
    EXPECT_TRUE(find<QPushButton>("pushButton_presetsTab").styleSheet().contains(lit));
    for (const auto &page : pages) {
        click(page.button);
        requests();
        EXPECT_EQ(find<QWidget>(page.button).geometry(), QRect(page.x, 90, page.width, 36));
        expectTidy(*window.centralWidget());
        expectTidy(find<QWidget>(page.page));
        expectDressed(*window.centralWidget());
        for (const auto &other : pages) {
            EXPECT_EQ(find<QWidget>(other.page).isVisible(), other.page == page.page) << page.page << other.page;
            EXPECT_TRUE(find<QPushButton>(other.button).styleSheet().contains(other.page == page.page ? lit : dark));
            EXPECT_EQ(find<QWidget>(other.page).geometry(), QRect(12, 130, 1298, 567));
        }
    }
    click("pushButton_presetsTab");
    for (const auto &[button, table] : subTabs) {
        click(button);
        expectTidy(find<QWidget>("widget_presets"));
        expectDressed(*window.centralWidget());
        const QPushButton &tab = find<QPushButton>(button);
        const QFontMetrics metrics(look::pixelFont(DataFromDevice::fontTabs));
        EXPECT_NEAR(inkHeight(tab.icon().pixmap(tab.iconSize()).toImage()),
                    metrics.tightBoundingRect(tab.accessibleName()).width(), 3)
            << "the whole text, from bottom to top";
        for (const auto &[otherButton, otherTable] : subTabs) {
            EXPECT_EQ(find<QWidget>(otherTable).isVisible(), otherTable == table) << table << otherTable;
            EXPECT_TRUE(find<QPushButton>(otherButton).styleSheet().contains(otherTable == table ? lit : dark));
        }
    }
}

TEST_F(Window, AsksForWhatAPageShowsWhileConnected)
{
    const Requests devices = all("RMD|A", 1, 10);
    Requests pedal = devices;
    pedal.emplace_back("REP");
    const std::pair<const char *, Requests> expected[] = {
        {"pushButton_presetsTab", {}},
        {"pushButton_settingsTab", {"ROS"}},
        {"pushButton_previewTab", {}},
        {"pushButton_midiMidiIn", {"RMI"}},
        {"pushButton_midiExpressionPedal", pedal},
        {"pushButton_midiDevicesTab", devices},
        {"pushButton_midiSwitchOut", {"RSO"}},
    };
    for (const auto &[button, asked] : expected) {
        click(button);
        EXPECT_EQ(requests(), asked) << button;
    }
    const QImage connectedIcon = icon("pushButton_connection");
    loseUnit();
    taken();
    EXPECT_NE(icon("pushButton_connection"), connectedIcon);
    EXPECT_EQ(status() + find<QLabel>("label_deviceFirmware").text(), "DEVICE DISCONNECTED");
    EXPECT_TRUE(find<QLabel>("label_noUnit").isVisible());
    for (const auto &page : expected)
        click(page.first);
    click("pushButton_settingsTab");
    onDialog([](QWidget &help) {
        EXPECT_FALSE(help.findChild<QPushButton *>("pushButton_copyCommand")->isVisible());
        QTest::mouseClick(help.findChild<QPushButton *>("pushButton_installDrivers"), Qt::LeftButton);
        EXPECT_TRUE(help.findChild<QPushButton *>("pushButton_copyCommand")->isVisible());
        QTest::mouseClick(help.findChild<QPushButton *>("pushButton_copyCommand"), Qt::LeftButton);
        EXPECT_EQ(QApplication::clipboard()->text(), help.findChild<QLabel *>("label_command")->text());
        EXPECT_EQ(QApplication::clipboard()->text(), "sudo adduser $USER dialout");
        dynamic_cast<InstallDriversWindow &>(help).close();
    });
    click("pushButton_connection");
    onDialog([](QWidget &help) { dynamic_cast<InstallDriversWindow &>(help).close(); });
    QTest::mouseClick(&find<QLabel>("label_deviceStatus"), Qt::LeftButton);

    unit.alter([](UnitMemory &memory) {
        memory.settings.wahPad1 = WahPadSetting::Loop2;
        memory.presets[0][3].name = "CHANGED";
    });
    findUnit();
    Requests anew{"RDI", "RDI", "RBB|A0"};
    for (const Requests &more : {all("RBP|A0|B", 0, 9), devices, Requests{"ROS"}})  // SETTINGS is open
        anew.insert(anew.end(), more.begin(), more.end());
    EXPECT_EQ(requests(), anew);
    EXPECT_EQ(find<QComboBox>("comboBox_wahPad1").currentText() + edit("midi", 4, 3).text(), "LOOP 2CHANGED");
    EXPECT_EQ(icon("pushButton_connection"), connectedIcon);
    EXPECT_FALSE(find<QLabel>("label_noUnit").isVisible());
    click("pushButton_connection");  // opens nothing
}

TEST_F(Window, EveryTableShowsItsOwnBankAgainAfterAReconnection)
{
    click("pushButton_loopsTab");
    type(edit("loops", 1, 0), "5");
    EXPECT_EQ(requests().size(), 11U);
    click("pushButton_switchTab");
    EXPECT_EQ(edit("switch", 1, 0).text(), "5") << "the bank chosen last in another table";
    click("pushButton_loopsTab");
    EXPECT_EQ(requests(), Requests{}) << "which is known";
    click("pushButton_previewTab");
    QTest::keyClicks(window.focusWidget(), "07");
    loseUnit();
    unit.alter([](UnitMemory &memory) { memory.banks[5].name = "CHANGED"; });
    taken();
    findUnit();
    EXPECT_EQ(edit("loops", 1, 2).text(), "CHANGED");
    const Requests asked = taken();
    for (const char *const bank : {"RBB|A0", "RBB|A5", "RBB|A7"})
        EXPECT_EQ(std::count(asked.begin(), asked.end(), bank), 1) << bank;
    click("pushButton_presetsTab");
    EXPECT_EQ(edit("loops", 1, 0).text(), "7") << "the bank chosen last on the preview";
}

TEST_F(Window, TheMenuOffersWhatNeedsAUnitOnlyWhileThereIsOne)
{
    window.move(-600, 0);  // the menu would be moved to stay on the small screen of the offscreen platform
    click("pushButton_menu");
    auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    const auto offered = [menu] {
        QStringList texts;
        for (const QAction *const action : menu->actions()) {
            texts << action->text();
            if (!action->menu()) continue;
            for (const QAction *const entry : action->menu()->actions())
                texts << (entry->isEnabled() ? "+" : "-") + entry->text();
        }
        return texts.join('|');
    };
    const QString expected = "FIRMWARE UPGRADE|BACKUP|+WHOLE UNIT...|+THIS BANK...|RESTORE|+FROM FILE...|"
                             "+COMPARE WITH FILE...|+BEFORE THE LAST RESTORE...|FACTORY RESET|+CLEAR THIS BANK...|"
                             "+CLEAR WHOLE UNIT...|WORK ON A FILE...|NEW FILE...|BACK TO THE UNIT|HELP";
    EXPECT_EQ(offered(), expected);
    expectLit(*menu, menu->actions().front());
    EXPECT_EQ(menu->pos(), find<QPushButton>("pushButton_menu").mapToGlobal(QPoint(0, 29)));
    onDialog([](QWidget &files) { static_cast<QDialog &>(files).reject(); });
    menu->actions().front()->trigger();
    menu->close();
    loseUnit();
    EXPECT_EQ(offered(), QString(expected).replace('+', '-'));
}

TEST_F(Window, IsMovedByItsTopMinimisedClosedAndTellsAboutItself)
{
    AboutWindow about;
    InstallDriversWindow drivers;
    MidiEditorWindow editor(PresetData(), MidiDevice(), 0, nullptr);
    const std::pair<QWidget *, int> bands[] = {{&window, 200}, {&about, 60}, {&drivers, 60}, {&editor, 60}};
    for (const auto &[widget, band] : bands) {
        const auto mouse = [dragged = widget](QEvent::Type type, const QPoint &point) {
            QMouseEvent event(type, point, dragged->pos() + point, Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(dragged, &event);
            return dragged->pos();
        };
        widget->move(100, 100);
        EXPECT_EQ(mouse(QEvent::MouseMove, {5, 5}), QPoint(100, 100)) << "before a press";
        mouse(QEvent::MouseButtonPress, {300, band});
        EXPECT_EQ(mouse(QEvent::MouseMove, {340, 80}), QPoint(100, 100)) << "pressed below the band";
        mouse(QEvent::MouseButtonPress, {300, band - 1});
        EXPECT_EQ(mouse(QEvent::MouseMove, {330, band + 20}), QPoint(130, 121));
        mouse(QEvent::MouseButtonRelease, {300, band - 1});
        EXPECT_EQ(mouse(QEvent::MouseMove, {0, 0}), QPoint(130, 121)) << "after the release";
    }
    const bool before = Connection::enableLog;
    for (const bool expected : {!before, before}) {
        QTest::keyClick(&window, Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(Connection::enableLog, expected);
    }
    QTest::keyClick(&window, Qt::Key_F1);
    const auto windows = QApplication::topLevelWidgets();
    EXPECT_TRUE(std::any_of(windows.begin(), windows.end(), [](const QWidget *shown) {
        const auto *const guide = shown->findChild<QTextBrowser *>("textBrowser_guide");
        return guide && shown->isVisible() && guide->toPlainText().contains("There is no save button.");
    }));
    onDialog([](QWidget &dialog) { dynamic_cast<AboutWindow &>(dialog).close(); });
    click("pushButton_logo");
    click("pushButton_minimizeWindow");
    EXPECT_TRUE(window.isMinimized());
    window.showNormal();
    click("pushButton_closeWindow");
    EXPECT_FALSE(window.isVisible());
}

TEST(Dialogs, AskOnceMoreForTheirPlaceWhenTheyAreToldAnother)
{
    InstallDriversWindow dialog;
    dialog.show();
    const QPoint wanted = dialog.pos();
    for (const QPoint &then : {wanted, QPoint(1, 2)}) {
        dialog.windowHandle()->setPosition(1, 2);
        QCoreApplication::processEvents();
        EXPECT_EQ(dialog.pos(), then);
    }
}

/// Takes the place of the desktop's browser and mail program.
class UrlCatcher : public QTextBrowser
{
public:
    QVariant loadResource(int, const QUrl &url) override
    {
        opened << url.toString();
        return QString();
    }
    QStringList opened;
};

TEST(AboutDialog, OpensItsLinksThroughTheDesktop)
{
    UrlCatcher desktop;  // its handlers go with it
    for (const char *const scheme : {"https", "mailto"})
        QDesktopServices::setUrlHandler(scheme, &desktop, "setSource");
    AboutWindow dialog;
    for (const char *const name : {"label_about", "label_footer"}) {
        auto *const label = dialog.findChild<QLabel *>(name);
        EXPECT_FALSE(label->openExternalLinks());
        emit label->linkActivated(label->text().section('"', 1, 1));
    }
    dialog.findChild<QPushButton *>("pushButton_logo")->click();
    EXPECT_EQ(desktop.opened.join(' '),
              "https://example.com/kora/editor mailto:kora@example.com https://example.com/kora");
}
