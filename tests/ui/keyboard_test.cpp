#include "ui/dialogs/aboutwindow.h"
#include "ui/dialogs/controllerlistwindow.h"
#include "ui/dialogs/historydialog.h"
#include "ui/dialogs/installdriverswindow.h"
#include "ui/dialogs/midieditorwindow.h"
#include "ui/editor.h"
#include "ui/look.h"
#include "ui/preview/previewwidget.h"

namespace {

struct ShownPage
{
    const char *button;
    const char *subTab;  // of the presets page, or empty
    const char *page;    // what the buttons bring up
    bool byColumns;      // settings are read column by column, tables row by row
};

const ShownPage shownPages[] = {
    {"pushButton_settingsTab", "", "widget_settings", true},
    {"pushButton_presetsTab", "pushButton_footswitchFunctionTab", "tableWidget_footswitchFunction", false},
    {"pushButton_presetsTab", "pushButton_loopsTab", "tableWidget_loops", false},
    {"pushButton_presetsTab", "pushButton_switchTab", "tableWidget_switch", false},
    {"pushButton_presetsTab", "pushButton_midiTab", "tableWidget_midi", false},
    {"pushButton_presetsTab", "pushButton_wahPads", "tableWidget_wahPads", false},
    {"pushButton_midiDevicesTab", "", "tableWidget_midiDevices", false},
    {"pushButton_midiMidiIn", "", "widget_midiIn", true},
    {"pushButton_midiExpressionPedal", "", "widget_expressionPedal", true},
    {"pushButton_midiSwitchOut", "", "widget_switchOut", true},
    {"pushButton_previewTab", "", "widget_preview", false},
    {"pushButton_libraryTab", "", "widget_library", false},
};

const QStringList beforeThePage{
    "pushButton_logo",        "pushButton_connection",          "pushButton_menu",          "pushButton_minimizeWindow",
    "pushButton_closeWindow", "pushButton_settingsTab",         "pushButton_presetsTab",    "pushButton_midiDevicesTab",
    "pushButton_midiMidiIn",  "pushButton_midiExpressionPedal", "pushButton_midiSwitchOut", "pushButton_previewTab",
    "pushButton_libraryTab"};
const QStringList subTabs{"pushButton_footswitchFunctionTab", "pushButton_loopsTab", "pushButton_switchTab",
                          "pushButton_midiTab", "pushButton_wahPads"};

bool isEditor(const QWidget *widget)
{
    return qobject_cast<const QComboBox *>(widget) || qobject_cast<const QLineEdit *>(widget) ||
           qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const PreviewWidget *>(widget) ||
           widget->objectName() == "tableView_library";
}

/// What Tab reaches from a widget until it comes back there.
QVector<QWidget *> walkFrom(QWidget *start)
{
    start->setFocus();
    QVector<QWidget *> reached;
    do {
        if (!reached.contains(QApplication::focusWidget())) reached << QApplication::focusWidget();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget() != start && reached.size() < 1000);
    return reached;
}

void expectNameAndVisibleFocus(QWidget *widget)
{
    const auto *const button = qobject_cast<QAbstractButton *>(widget);
    const auto *const label = qobject_cast<QLabel *>(widget);
    const bool saysItself = (button && !button->text().isEmpty()) || (label && !label->text().isEmpty());
    const std::string what = widget->accessibleName().toStdString() + '/' + widget->objectName().toStdString();
    EXPECT_FALSE(widget->accessibleName().isEmpty() && !saysItself) << what;

    // Of an edit only the frame, since its cursor would tell the two apart as well.
    const QRect edge(0, 0, widget->width(), qobject_cast<QLineEdit *>(widget) ? 4 : widget->height());
    widget->clearFocus();
    const QImage without = widget->grab(edge).toImage();
    widget->setFocus(Qt::TabFocusReason);
    EXPECT_NE(widget->grab(edge).toImage(), without) << what;
}

class Keyboard : public Editor
{
protected:
    void SetUp() override
    {
        Editor::SetUp();
        EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "pushButton_presetsTab");
    }

    void open(const ShownPage &page)
    {
        click(page.button);
        if (*page.subTab) click(page.subTab);
        ASSERT_TRUE(settles());
    }

    /// The page's editors that a user sees and may change, in reading order.
    QVector<QWidget *> editorsOf(const ShownPage &page) const
    {
        QVector<QWidget *> editors;
        for (QWidget *const widget : find<QWidget>(page.page).findChildren<QWidget *>())
            if (isEditor(widget) && widget->isVisible() && widget->isEnabled()) editors << widget;
        const auto place = [&](const QWidget *widget) {
            const QPoint at = widget->mapTo(&window, QPoint());
            return page.byColumns ? std::pair(at.x(), at.y()) : std::pair(at.y(), at.x());
        };
        std::sort(editors.begin(), editors.end(), [&](auto *a, auto *b) { return place(a) < place(b); });
        return editors;
    }

    QVector<QWidget *> walk() { return walkFrom(&find<QPushButton>("pushButton_logo")); }
};

}  // namespace

TEST_F(Keyboard, TabReachesTheShownPagesEditorsInReadingOrderAndNothingElse)
{
    for (const ShownPage &page : shownPages) {
        SCOPED_TRACE(page.page);
        open(page);
        const QVector<QWidget *> editors = editorsOf(page);
        EXPECT_GE(editors.size(), 2);

        const QStringList buttons = *page.subTab ? beforeThePage + subTabs : beforeThePage;
        const QVector<QWidget *> reached = walk();
        ASSERT_EQ(reached.size(), buttons.size() + editors.size());
        for (int i = 0; i < reached.size(); ++i) {
            if (i < buttons.size())
                EXPECT_EQ(reached[i]->objectName().toStdString(), buttons[i].toStdString());
            else
                EXPECT_EQ(reached[i], editors[i - buttons.size()]) << reached[i]->accessibleName().toStdString();
        }
    }
}

TEST_F(Keyboard, AltAndANumberOpenThePageAtItsFirstEditor)
{
    const std::pair<const char *, const char *> shown[] = {{"widget_settings", "LOOP SPLIT"},
                                                           {"widget_presets", "Bank number"},
                                                           {"tableWidget_midiDevices", "Name of MIDI device 1"},
                                                           {"widget_midiIn", "CHANNEL"},
                                                           {"widget_expressionPedal", "PERIOD"},
                                                           {"widget_switchOut", "SWITCH OUT 1"},
                                                           {"widget_preview", "Preview of the bank"},
                                                           {"widget_library", "Find"}};
    for (int number = 8; number >= 1; --number) {
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(Qt::Key_0 + number), Qt::AltModifier);
        const auto &[page, first] = shown[number - 1];
        EXPECT_TRUE(find<QWidget>(page).isVisible()) << number;
        EXPECT_EQ(QApplication::focusWidget()->accessibleName(), first);
    }
    EXPECT_TRUE(settles());
}

TEST_F(Keyboard, ControlAndTabWalkTheSubTabsAndEnterOpensAMidiButton)
{
    QTest::keyClick(&window, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    for (const char *const table : {"wahPads", "footswitchFunction", "loops", "switch", "midi"}) {
        EXPECT_TRUE(find<QWidget>(QString("tableWidget_") + table).isVisible()) << table;
        if (*table != 'm') QTest::keyClick(&window, Qt::Key_Tab, Qt::ControlModifier);
    }
    for (const auto &[key, modifiers] : {std::pair(Qt::Key_Return, Qt::NoModifier), {Qt::Key_Down, Qt::AltModifier}}) {
        onDialog([](QWidget &dialog) { dialog.close(); });
        QTest::keyClick(&cell<QWidget>("midi", 1, 4), key, modifiers);
    }
}

TEST_F(Keyboard, EveryEditorHasANameAndShowsItsFocus)
{
    for (const ShownPage &page : shownPages) {
        open(page);
        SCOPED_TRACE(page.page);
        for (QWidget *const widget : walk())
            expectNameAndVisibleFocus(widget);
    }
}

TEST(KeyboardInDialogs, TabReachesEverythingOnlyOkAcceptsAndEscapeRejects)
{
    MidiDevice device;
    QStringList controllers;
    QStringList values;
    for (int number = 1; number <= controllerCount; ++number) {
        device.controllers[static_cast<std::size_t>(number - 1)] = {"CC" + std::to_string(number), 7};
        for (const char *what : {"Name", "Number"})
            controllers << QString("%1 of controller %2").arg(what).arg(number);
        values << QString("Value of CC%1").arg(number);
    }
    const QStringList choices{"comboBox_programChangeNumber", "comboBox_controllers", "comboBox_characteristic",
                              "comboBox_toeUpValue", "comboBox_toeDownValue"};
    const QStringList answers{"pushButton_ok", "pushButton_cancel"};
    AboutWindow about;
    InstallDriversWindow drivers;
    ControllerListWindow list(device, 0, nullptr);
    MidiEditorWindow editor(PresetData(), device, 0, nullptr);
    HistoryDialog history({"ONE", "TWO"}, 1, nullptr);
    const struct
    {
        QDialog *dialog;
        QStringList stops;
        QString enterAt;
        int onEnter;
    } cases[] = {
        {&about,
         {"pushButton_closeWindow", "pushButton_logo", "label_about", "label_footer"},
         "label_footer",
         QDialog::Rejected},
        {&drivers,
         {"pushButton_closeWindow", "pushButton_installDrivers"},
         "pushButton_closeWindow",
         QDialog::Rejected},
        {&history,
         {"listWidget_history", "pushButton_goTo", "pushButton_cancel"},
         "listWidget_history",
         QDialog::Accepted},
        {&list, controllers + answers, "pushButton_ok", QDialog::Accepted},
        {&editor, choices + values + answers, "pushButton_ok", QDialog::Accepted},
    };
    for (const auto &[dialog, stops, enterAt, onEnter] : cases) {
        dialog->show();
        QApplication::setActiveWindow(dialog);
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
        QStringList reached;
        for (QWidget *const widget : walkFrom(QApplication::focusWidget())) {
            reached << (widget->objectName().isEmpty() ? widget->accessibleName() : widget->objectName());
            expectNameAndVisibleFocus(widget);
        }
        EXPECT_EQ(reached.join('\n').toStdString(), stops.join('\n').toStdString());
        const auto resultOf = [shown = dialog](Qt::Key key, QWidget *focused) {
            shown->show();
            shown->setResult(-1);
            focused->setFocus();
            QTest::keyClick(focused, key);
            return shown->isVisible() ? -1 : shown->result();
        };
        EXPECT_EQ(resultOf(Qt::Key_Escape, dialog->findChild<QWidget *>(enterAt)), QDialog::Rejected);
        EXPECT_EQ(resultOf(Qt::Key_Return, dialog->findChild<QWidget *>(enterAt)), onEnter);
    }
}
