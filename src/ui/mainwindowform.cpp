#include "ui/mainwindowform.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>

namespace {

constexpr QSize windowSize(1322, 709);
constexpr QRect pageArea(12, 130, 1298, 567);
constexpr QRect subTabArea(64, 14, 1194, 543);  // within the presets page

/// Makes a widget under its object name, at its place on its parent.
template <typename Widget>
Widget *make(QWidget *parent, const char *name, const QRect &place)
{
    auto *widget = new Widget(parent);
    widget->setObjectName(QLatin1String(name));
    widget->setGeometry(place);
    return widget;
}

QLabel *makeLabel(QWidget *parent, const char *name, const QRect &place, const QFont &font)
{
    auto *label = make<QLabel>(parent, name, place);
    label->setFont(look::pixelFont(font));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton *makePlainButton(QWidget *parent, const char *name, const QRect &place, const QString &hoverColor)
{
    auto *button = make<QPushButton>(parent, name, place);
    button->setStyleSheet(look::plainButtonStyle(hoverColor));
    return button;
}

QTableWidget *makeTable(QWidget *parent, const char *name, const QRect &place, int rows, int columns)
{
    auto *table = make<QTableWidget>(parent, name, place);
    table->setRowCount(rows);
    table->setColumnCount(columns);
    return table;
}

/// Text that reads from bottom to top, as an icon of this size; the text starts at `originX` on the turned ground.
QIcon verticalText(const QString &text, const QSize &size, int originX)
{
    constexpr int baseline = 23;
    const qreal scale = qApp->devicePixelRatio();
    QPixmap pixmap(size * scale);
    pixmap.setDevicePixelRatio(scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setPen(Qt::white);
    painter.setFont(look::pixelFont(DataFromDevice::fontTabs));
    painter.rotate(-90);
    painter.drawText(originX, baseline, text);
    return QIcon(pixmap);
}

}  // namespace

MainWindowForm::MainWindowForm(QMainWindow *window) : body(new QWidget(window))
{
    window->setObjectName(QStringLiteral("MainWindow"));
    window->setWindowTitle(QStringLiteral("KORA"));
    window->setFixedSize(windowSize);
    window->setStyleSheet(look::windowStyle());
    body->setObjectName(QStringLiteral("centralWidget"));
    window->setCentralWidget(body);
    makeTopBand();  // from top to bottom, which is the order of Tab
    makePageBar();
    makePages();
    makeBusyDisplay();
}

void MainWindowForm::makeTopBand()
{
    pushButton_logo = makePlainButton(body, "pushButton_logo", {16, 10, 210, 68}, QStringLiteral("transparent"));
    look::makeIconButton(pushButton_logo, QIcon(QStringLiteral(":/images/logo.png")), {200, 64},
                         QObject::tr("About this program"));

    pushButton_connection =
        makePlainButton(body, "pushButton_connection", {846, 24, 44, 44}, QStringLiteral("transparent"));
    pushButton_connection->setIconSize({36, 36});
    label_deviceStatus = makeLabel(body, "label_deviceStatus", {898, 24, 220, 24}, DataFromDevice::fontDeviceStatus);
    label_deviceFirmware =
        makeLabel(body, "label_deviceFirmware", {898, 48, 220, 20}, DataFromDevice::fontFirmwareVersion);

    pushButton_menu = makePlainButton(body, "pushButton_menu", {1128, 31, 90, 29}, look::pageColor);
    pushButton_menu->setText(QStringLiteral("MENU"));
    pushButton_menu->setFont(look::pixelFont(DataFromDevice::fontTabs));
    pushButton_menu->setLayoutDirection(Qt::RightToLeft);
    pushButton_menu->setIcon(QIcon(QStringLiteral(":/images/menu.png")));
    pushButton_menu->setIconSize({18, 18});

    pushButton_minimizeWindow = makePlainButton(body, "pushButton_minimizeWindow", {1236, 30, 32, 32}, look::pageColor);
    look::makeIconButton(pushButton_minimizeWindow, QIcon(QStringLiteral(":/images/minimize.png")), {16, 16},
                         QObject::tr("Minimise"));
    pushButton_closeWindow = makePlainButton(body, "pushButton_closeWindow", {1274, 30, 32, 32}, look::rejectColor);
    look::makeIconButton(pushButton_closeWindow, QIcon(QStringLiteral(":/images/close.png")), {16, 16},
                         QObject::tr("Close"));
}

void MainWindowForm::makePageBar()
{
    int left = pageArea.left();
    int number = 0;
    const auto pageButton = [&](const char *name, const QString &text, int width = 100) {
        auto *button = make<QPushButton>(body, name, {left, 90, width, 36});
        button->setText(text);
        button->setFont(look::pixelFont(DataFromDevice::fontTabs));
        button->setStyleSheet(look::tabButtonStyle(false));
        button->setShortcut(QKeySequence(static_cast<int>(Qt::ALT) + Qt::Key_1 + number));
        button->setToolTip(QStringLiteral("Alt+%1").arg(++number));
        left += width + 6;
        return button;
    };
    pushButton_settingsTab = pageButton("pushButton_settingsTab", QStringLiteral("SETTINGS"));
    pushButton_presetsTab = pageButton("pushButton_presetsTab", QStringLiteral("PRESETS"));
    pushButton_midiDevicesTab = pageButton("pushButton_midiDevicesTab", QStringLiteral("MIDI DEVICES"));
    pushButton_midiMidiIn = pageButton("pushButton_midiMidiIn", QStringLiteral("MIDI IN"));
    pushButton_midiExpressionPedal =
        pageButton("pushButton_midiExpressionPedal", QStringLiteral("EXPRESSION PEDAL"), 141);
    pushButton_midiSwitchOut = pageButton("pushButton_midiSwitchOut", QStringLiteral("SWITCH OUT"));
    pushButton_previewTab = pageButton("pushButton_previewTab", QStringLiteral("PREVIEW"));
}

void MainWindowForm::makePages()
{
    const auto page = [this](const char *name) {
        auto *widget = make<QWidget>(body, name, pageArea);
        widget->setAttribute(Qt::WA_StyledBackground);
        widget->setStyleSheet(QStringLiteral("#%1 { background-color: %2; border-radius: 8; }")
                                  .arg(QLatin1String(name), look::pageColor));
        return widget;
    };
    widget_settings = page("widget_settings");
    widget_presets = page("widget_presets");
    tableWidget_midiDevices = makeTable(body, "tableWidget_midiDevices", pageArea, 0, 9);
    body->setStyleSheet(QStringLiteral("#tableWidget_midiDevices { padding: 10px 54px; border-radius: 8; }"));
    widget_midiIn = page("widget_midiIn");
    widget_expressionPedal = page("widget_expressionPedal");
    widget_switchOut = page("widget_switchOut");
    widget_preview = page("widget_preview");
    makePresetsPage();
    for (QWidget *const hidden : {widget_settings, static_cast<QWidget *>(tableWidget_midiDevices), widget_midiIn,
                                  widget_expressionPedal, widget_switchOut, widget_preview})
        hidden->hide();
    widget_presets->raise();
}

void MainWindowForm::makePresetsPage()
{
    int top = subTabArea.top();
    const auto button = [&](const char *name, const QString &text, const QSize &pixmap, int originX) {
        auto *subTab = make<QPushButton>(widget_presets, name, {8, top, 50, pixmap.height() + 10});
        subTab->setIcon(verticalText(text, pixmap, originX));
        subTab->setIconSize(pixmap);
        subTab->setAccessibleName(text);
        subTab->setStyleSheet(look::tabButtonStyle(false));
        top += subTab->height() + 6;
        return subTab;
    };
    pushButton_footswitchFunctionTab =
        button("pushButton_footswitchFunctionTab", QStringLiteral("FOOTSWITCH FUNCTION"), {36, 170}, -159);
    pushButton_loopsTab = button("pushButton_loopsTab", QStringLiteral("LOOPS"), {41, 70}, -54);
    pushButton_switchTab = button("pushButton_switchTab", QStringLiteral("SWITCH"), {41, 78}, -61);
    pushButton_midiTab = button("pushButton_midiTab", QStringLiteral("MIDI"), {41, 60}, -43);
    pushButton_wahPads = button("pushButton_wahPads", QStringLiteral("WAH PAD"), {41, 60}, -59);

    tableWidget_footswitchFunction = makeTable(widget_presets, "tableWidget_footswitchFunction", subTabArea, 1, 5);
    tableWidget_loops = makeTable(widget_presets, "tableWidget_loops", subTabArea, 1, 11);
    tableWidget_switch = makeTable(widget_presets, "tableWidget_switch", subTabArea, 1, 10);
    tableWidget_midi = makeTable(widget_presets, "tableWidget_midi", subTabArea, 1, 14);
    tableWidget_wahPads = makeTable(widget_presets, "tableWidget_wahPads", subTabArea, 1, 5);
    for (QTableWidget *const hidden : {tableWidget_loops, tableWidget_switch, tableWidget_midi, tableWidget_wahPads})
        hidden->hide();
}

void MainWindowForm::makeBusyDisplay()
{
    const QRect textPlace(QPoint((windowSize.width() - 481) / 2, 430), QSize(481, 51));
    label_loading = make<QLabel>(body, "label_loading", QRect(QPoint(), windowSize));
    label_loading->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 255, 40%);"));
    label_loading->setAlignment(Qt::AlignCenter);
    label_loadingText = makeLabel(body, "label_loadingText", textPlace, DataFromDevice::fontSettingsLabel);
    label_loadingText->setStyleSheet(QStringLiteral("background: transparent; color: white;"));
    label_loadingText->setAlignment(Qt::AlignCenter);
    progressBar_loading = make<QProgressBar>(body, "progressBar_loading",
                                             textPlace.translated(0, textPlace.height()).adjusted(0, 0, 0, -35));
    progressBar_loading->setRange(0, 100);
    progressBar_loading->setTextVisible(false);
    progressBar_loading->setAccessibleName(QObject::tr("Progress of the upload"));
    progressBar_loading->setStyleSheet(
        QStringLiteral("QProgressBar { background-color: %1; border: none; border-radius: 8; }\n"
                       "QProgressBar::chunk { background-color: %2; border-radius: 8; }")
            .arg(look::tabColor, look::focusColor));
    // The veil lies above everything but these.
    pushButton_minimizeWindow->raise();
    pushButton_closeWindow->raise();
    label_loading->hide();
    label_loadingText->hide();
    progressBar_loading->hide();
}
