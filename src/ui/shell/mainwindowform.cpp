#include "ui/shell/mainwindowform.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>

namespace {

constexpr QRect wholePageArea(12, 130, 1298, 567);
constexpr int spareWidth = 42;                  // of the pages, on both sides of what stands on them
constexpr QRect subTabArea(64, 14, 1194, 543);  // within the presets page

/// What the screen lacks in width for the window, if the pages can do without.
int lackingWidth()
{
    const int lack = MainWindowForm::windowSize.width() - QGuiApplication::primaryScreen()->availableSize().width();
    return lack > 0 && lack <= spareWidth ? lack : 0;
}

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

MainWindowForm::MainWindowForm(QMainWindow *window)
    : lack(lackingWidth()), size(windowSize - QSize(lack, 0)), pageArea(wholePageArea.adjusted(0, 0, -lack, 0)),
      body(new QWidget(window))
{
    window->setObjectName(QStringLiteral("MainWindow"));
    window->setWindowTitle(QStringLiteral("KORA"));
    window->setFixedSize(size);
    window->setStyleSheet(look::windowStyle());
    body->setObjectName(QStringLiteral("centralWidget"));
    window->setCentralWidget(body);
    makeTopBand();  // from top to bottom, which is the order of Tab
    makePages();
    makeBusyDisplay();
}

void MainWindowForm::makeTopBand()
{
    pushButton_logo = makePlainButton(body, "pushButton_logo", {16, 10, 210, 68}, QStringLiteral("transparent"));
    look::makeIconButton(pushButton_logo, look::icon("logo"), {200, 64}, QObject::tr("About this program"));

    const auto fromRight = [this](int x, int y, int width, int height) { return QRect(x - lack, y, width, height); };
    pushButton_undo = makePlainButton(body, "pushButton_undo", fromRight(758, 30, 32, 32), look::pageColor);
    look::makeIconButton(pushButton_undo, look::fadingIcon("undo"), {20, 20}, QObject::tr("Undo"));
    pushButton_redo = makePlainButton(body, "pushButton_redo", fromRight(796, 30, 32, 32), look::pageColor);
    look::makeIconButton(pushButton_redo, look::fadingIcon("redo"), {20, 20}, QObject::tr("Redo"));

    pushButton_connection =
        makePlainButton(body, "pushButton_connection", fromRight(846, 24, 44, 44), QStringLiteral("transparent"));
    pushButton_connection->setIconSize({36, 36});
    label_deviceStatus =
        makeLabel(body, "label_deviceStatus", fromRight(898, 24, 220, 24), DataFromDevice::fontDeviceStatus);
    label_deviceFirmware =
        makeLabel(body, "label_deviceFirmware", fromRight(898, 48, 220, 20), DataFromDevice::fontFirmwareVersion);

    label_pending = makeLabel(body, "label_pending", fromRight(832, 41, 10, 10), DataFromDevice::fontFirmwareVersion);
    label_pending->setStyleSheet(QStringLiteral("background-color: %1; border-radius: 5;").arg(look::focusColor));
    label_pending->setToolTip(QObject::tr("A change is on its way to the unit"));
    label_pending->setAccessibleName(label_pending->toolTip());
    label_pending->hide();

    pushButton_menu = makePlainButton(body, "pushButton_menu", fromRight(1128, 31, 90, 29), look::pageColor);
    pushButton_menu->setText(QStringLiteral("MENU"));
    pushButton_menu->setFont(look::pixelFont(DataFromDevice::fontTabs));
    pushButton_menu->setLayoutDirection(Qt::RightToLeft);
    pushButton_menu->setIcon(look::icon("menu"));
    pushButton_menu->setIconSize({18, 18});

    pushButton_minimizeWindow =
        makePlainButton(body, "pushButton_minimizeWindow", fromRight(1236, 30, 32, 32), look::pageColor);
    look::makeIconButton(pushButton_minimizeWindow, look::icon("minimize"), {16, 16}, QObject::tr("Minimise"));
    pushButton_closeWindow =
        makePlainButton(body, "pushButton_closeWindow", fromRight(1274, 30, 32, 32), look::rejectColor);
    look::makeIconButton(pushButton_closeWindow, look::icon("close"), {16, 16}, QObject::tr("Close"));
}

void MainWindowForm::makePages()
{
    struct Row
    {
        const char *button;
        const char *text;
        const char *page;
        int width = 100;
    };
    static constexpr std::array<Row, PageCount> rows{{
        {"pushButton_settingsTab", "SETTINGS", "widget_settings"},
        {"pushButton_presetsTab", "PRESETS", "widget_presets"},
        {"pushButton_midiDevicesTab", "MIDI DEVICES", "tableWidget_midiDevices"},
        {"pushButton_midiMidiIn", "MIDI IN", "widget_midiIn"},
        {"pushButton_midiExpressionPedal", "EXPRESSION PEDAL", "widget_expressionPedal", 141},
        {"pushButton_midiSwitchOut", "SWITCH OUT", "widget_switchOut"},
        {"pushButton_previewTab", "PREVIEW", "widget_preview"},
        {"pushButton_libraryTab", "LIBRARY", "widget_library"},
    }};
    int left = pageArea.left();
    for (std::size_t index = 0; index < PageCount; ++index) {
        auto *button = make<QPushButton>(body, rows[index].button, {left, 90, rows[index].width, 36});
        button->setText(QLatin1String(rows[index].text));
        button->setFont(look::pixelFont(DataFromDevice::fontTabs));
        button->setStyleSheet(look::tabButtonStyle(index == PresetsPageIndex));
        button->setToolTip(QStringLiteral("Alt+%1").arg(index + 1));
        left += rows[index].width + 6;
        pages[index].button = button;
    }
    for (std::size_t index = 0; index < PageCount; ++index) {
        pages[index].widget =
            index == MidiDevicesPageIndex ? makeDevicesPage(rows[index].page) : makePage(rows[index].page);
        pages[index].widget->setVisible(index == PresetsPageIndex);
    }
    makePresetsPage();
    page(PresetsPageIndex)->raise();
    makeNoUnitStrip();
}

QWidget *MainWindowForm::makePage(const char *name)
{
    auto *widget = make<QWidget>(body, name, pageArea);
    widget->setAttribute(Qt::WA_StyledBackground);
    widget->setStyleSheet(
        QStringLiteral("#%1 { background-color: %2; border-radius: 8; }").arg(QLatin1String(name), look::pageColor));
    return widget;
}

QWidget *MainWindowForm::makeDevicesPage(const char *name)
{
    QTableWidget *const table = makeTable(body, name, pageArea, 0, 10);
    body->setStyleSheet(QStringLiteral("#%1 { padding: 10px 9px; border-radius: 8; }").arg(QLatin1String(name)));
    return table;
}

void MainWindowForm::makeNoUnitStrip()
{
    const QRect strip(pageArea.left(), 127, pageArea.width(), 18);  // above the headers of the tables
    label_noUnit = makeLabel(body, "label_noUnit", strip, DataFromDevice::fontTabs);
    label_noUnit->setText(QStringLiteral("NO UNIT IS CONNECTED: WHAT YOU CHANGE HERE IS NOT KEPT"));
    label_noUnit->setStyleSheet(
        QStringLiteral("background-color: %1; color: white; border-radius: 8;").arg(look::rejectColor));
    label_noUnit->setAlignment(Qt::AlignCenter);
    label_noUnit->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void MainWindowForm::makePresetsPage()
{
    struct Row
    {
        const char *button;
        const char *text;
        QSize pixmap;
        int originX;
        const char *table;
        int columns;
    };
    static constexpr std::array<Row, SubTabCount> rows{{
        {"pushButton_footswitchFunctionTab",
         "FOOTSWITCH FUNCTION",
         {36, 170},
         -159,
         "tableWidget_footswitchFunction",
         5},
        {"pushButton_loopsTab", "LOOPS", {41, 70}, -54, "tableWidget_loops", 11},
        {"pushButton_switchTab", "SWITCH", {41, 78}, -61, "tableWidget_switch", 10},
        {"pushButton_midiTab", "MIDI", {41, 60}, -43, "tableWidget_midi", 14},
        {"pushButton_wahPads", "WAH PAD", {41, 60}, -59, "tableWidget_wahPads", 5},
    }};
    QWidget *const presets = page(PresetsPageIndex);
    int top = subTabArea.top();
    for (std::size_t index = 0; index < SubTabCount; ++index) {
        const Row &row = rows[index];
        const QString text = QLatin1String(row.text);
        auto *button = make<QPushButton>(presets, row.button, {8, top, 50, row.pixmap.height() + 10});
        button->setIcon(verticalText(text, row.pixmap, row.originX));
        button->setIconSize(row.pixmap);
        button->setAccessibleName(text);
        button->setStyleSheet(look::tabButtonStyle(index == FootswitchFunctionTab));
        top += button->height() + 6;
        subTabs[index].button = button;
    }
    for (std::size_t index = 0; index < SubTabCount; ++index) {
        subTabs[index].table = makeTable(presets, rows[index].table, subTabArea, 1, rows[index].columns);
        subTabs[index].table->setVisible(index == FootswitchFunctionTab);
    }
}

QProgressBar *MainWindowForm::makeProgress(const char *name, const QRect &place, const QString &accessibleName)
{
    auto *progress = make<QProgressBar>(body, name, place);
    progress->setRange(0, 100);
    progress->setTextVisible(false);
    progress->setAccessibleName(accessibleName);
    progress->setStyleSheet(look::progressStyle());
    return progress;
}

void MainWindowForm::makeBusyDisplay()
{
    const QRect textPlace(QPoint((size.width() - 481) / 2, 430), QSize(481, 51));
    const QRect progressPlace = textPlace.translated(0, textPlace.height() + 6).adjusted(0, 0, 0, -35);
    label_loading = make<QLabel>(body, "label_loading", QRect(QPoint(), size));
    label_loading->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 255, 40%);"));
    label_loading->setAlignment(Qt::AlignCenter);

    label_loadingText = makeLabel(body, "label_loadingText", textPlace, DataFromDevice::fontSettingsLabel);
    label_transfer = makeLabel(body, "label_transfer", textPlace, DataFromDevice::fontSettingsLabel);
    for (QLabel *const text : {label_loadingText, label_transfer}) {
        text->setStyleSheet(QStringLiteral("background-color: %1; color: white; border-radius: 8;")
                                .arg(look::windowColor));  // readable over every page
        text->setAlignment(Qt::AlignCenter);
    }
    progressBar_loading = makeProgress("progressBar_loading", progressPlace, QObject::tr("Progress of the upload"));
    progressBar_transfer = makeProgress("progressBar_transfer", progressPlace, QObject::tr("Progress of the transfer"));
    pushButton_cancelTransfer = make<QPushButton>(body, "pushButton_cancelTransfer",
                                                  QRect(size.width() / 2 - 60, progressPlace.bottom() + 14, 120, 32));
    pushButton_cancelTransfer->setText(QStringLiteral("CANCEL"));
    pushButton_cancelTransfer->setFont(look::pixelFont(DataFromDevice::fontTabs));
    pushButton_cancelTransfer->setStyleSheet(look::answerButtonStyle(look::rejectColor));

    // The veil lies above everything but these.
    pushButton_minimizeWindow->raise();
    pushButton_closeWindow->raise();
    for (QWidget *const hidden :
         {static_cast<QWidget *>(label_loading), static_cast<QWidget *>(label_loadingText),
          static_cast<QWidget *>(progressBar_loading), static_cast<QWidget *>(label_transfer),
          static_cast<QWidget *>(progressBar_transfer), static_cast<QWidget *>(pushButton_cancelTransfer)})
        hidden->hide();
}
