#include "ui/preview/previewwidget.h"

#include "model/qtversions.h"
#include "ui/look.h"
#include "ui/message.h"
#include "ui/namebutton.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QHelpEvent>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSaveFile>
#include <QSvgGenerator>
#include <QToolTip>

#include <utility>

namespace {

constexpr ulong typingPause = 1000;  ///< milliseconds
constexpr double pngScale = 3;
constexpr double printedWidth = 277;  ///< millimetres: A4 across, with margins
constexpr double millimetresPerInch = 25.4;
constexpr double millimetresPerMetre = 1000;

bool paintOnPaper(QPaintDevice *device, const PreviewScene &scene, double scale)
{
    QPainter painter;
    if (!painter.begin(device)) return false;
    painter.scale(scale, scale);
    preview::paint(painter, scene, preview::Medium::Paper);
    return painter.end();
}

bool writeSvg(QIODevice *file, const PreviewScene &scene)
{
    QSvgGenerator generator;
    generator.setOutputDevice(file);
    generator.setTitle(scene.bankName);
    generator.setSize(preview::canvas.toSize());
    generator.setViewBox(QRectF(QPointF(), preview::canvas));
    generator.setResolution(qRound(preview::canvas.width() / printedWidth * millimetresPerInch));
    return paintOnPaper(&generator, scene, 1);
}

bool writePng(QIODevice *file, const PreviewScene &scene)
{
    QImage image((preview::canvas * pngScale).toSize(), QImage::Format_RGB32);
    image.setDotsPerMeterX(qRound(image.width() / printedWidth * millimetresPerMetre));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    return paintOnPaper(&image, scene, pngScale) && image.save(file, "PNG");
}

}  // namespace

PreviewWidget::PreviewWidget(QWidget *parent)
    : QWidget(parent), arrowDown(addArrow("arrow-down", tr("Previous bank"), -1)),
      arrowUp(addArrow("arrow-up", tr("Next bank"), 1)),
      pictureButton(addSaveButton("pushButton_savePicture", tr("SAVE PICTURE"))),
      sheetsButton(addSaveButton("pushButton_saveSheets", tr("SAVE SHEETS...")))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Preview of the bank"));
    resize(preview::canvas.toSize());

    pictureButton->setToolTip(QStringLiteral("Ctrl+S"));
    connect(pictureButton, &QPushButton::clicked, this, &PreviewWidget::choosePath);
    makeSheetsMenu();
    auto *save = new QAction(pictureButton->text(), this);
    save->setShortcut(QKeySequence(QStringLiteral("Ctrl+S")));
    save->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(save, &QAction::triggered, this, &PreviewWidget::choosePath);
    addAction(save);
    setStyleSheet(look::menuStyle());  // reaches the context menu, which is a child
    refresh();
}

QPushButton *PreviewWidget::addArrow(const char *icon, const QString &name, int step)
{
    auto *arrow = new QPushButton(this);
    arrow->setStyleSheet(look::plainButtonStyle(look::pageColor));
    look::makeIconButton(arrow, look::fadingIcon(icon), QSize(30, 30), name);
    connect(arrow, &QPushButton::clicked, this, [this, step] { page(step); });
    return arrow;
}

QPushButton *PreviewWidget::addSaveButton(const char *objectName, const QString &name)
{
    auto *button = new QPushButton(name, this);
    button->setObjectName(QLatin1String(objectName));
    button->setFont(look::pixelFont(DataFromDevice::fontTabs));
    button->setStyleSheet(look::plainButtonStyle(look::selectionColor) +
                          QStringLiteral("\nQPushButton { background-color: %1; }"
                                         "\nQPushButton::menu-indicator { image: none; width: 0; }")
                              .arg(look::tabColor));
    return button;
}

void PreviewWidget::makeSheetsMenu()
{
    auto *menu = new QMenu(sheetsButton);
    menu->setStyleSheet(look::menuStyle());
    menu->addAction(tr("SHOWN BANK..."), this, [this] { emit sheetsAsked(currentBank()); });
    menu->addAction(tr("ALL BANKS WITH CONTENT..."), this, &PreviewWidget::allSheetsAsked);
    sheetsButton->setMenu(menu);
    sheetsButton->setToolTip(tr("A PDF of banks to print"));
}

void PreviewWidget::requestBank()
{
    if (shown.data()) emit getBankAndPresetData(currentBank());
}

void PreviewWidget::retry()
{
    if (isUnreadable) requestBank();
}

void PreviewWidget::readFailed(int bank)
{
    if (bank == currentBank()) isUnreadable = true;
}

void PreviewWidget::loadDataFromDevice(DataFromDevice *dataFromDevice)
{
    shown.setModel(dataFromDevice);
    isUnreadable = false;
    refresh();
}

void PreviewWidget::gotBankAndPresetData(int bank)
{
    if (bank != currentBank()) return;
    isUnreadable = isUnreadable && !shown.isRead();
    refresh();
}

void PreviewWidget::gotMidiDevicesData() { refresh(); }

void PreviewWidget::page(int step)
{
    firstDigit.reset();
    if (shown.goTo(currentBank() + step)) showNewBank();
}

void PreviewWidget::typeDigit(int digit, ulong time)
{
    const bool completes = firstDigit && time - typedAt <= typingPause;
    const int bank = completes ? *firstDigit * 10 + digit : digit;
    firstDigit = completes ? std::nullopt : std::optional(digit);
    typedAt = time;
    if (shown.goTo(bank))
        showNewBank();
    else
        retry();
}

void PreviewWidget::showNewBank()
{
    isUnreadable = false;
    refresh();
    requestBank();
    emit bankChosen(currentBank());
}

void PreviewWidget::follow(int bank)
{
    if (moveTo(bank)) requestBank();
}

bool PreviewWidget::moveTo(int bank)
{
    firstDigit.reset();
    if (!shown.goTo(bank)) return false;
    isUnreadable = false;
    refresh();
    return !shown.isRead();
}

void PreviewWidget::choose(int footswitch)
{
    if (footswitch < 0 || footswitch >= presetCount) return;
    chosen = footswitch;
    refresh();
}

void PreviewWidget::refresh()
{
    picture = PreviewScene::of(shown.data(), currentBank(), chosen);
    setAccessibleDescription(picture.description());
    enable(arrowDown, currentBank() > 0);
    enable(arrowUp, currentBank() < bankCount - 1);
    update();
}

void PreviewWidget::enable(QPushButton *arrow, bool enabled)
{
    if (!enabled && arrow->hasFocus()) setFocus();  // rather than the button behind it
    arrow->setEnabled(enabled);
}

QTransform PreviewWidget::fit() const
{
    const double scale = qMin(width() / preview::canvas.width(), height() / preview::canvas.height());
    return QTransform::fromTranslate(width() / 2.0, height() / 2.0)
        .scale(scale, scale)
        .translate(-preview::canvas.width() / 2, -preview::canvas.height() / 2);
}

void PreviewWidget::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(look::windowColor));  // beside the picture where the form is another
    painter.setTransform(fit(), true);
    cutTexts = preview::paint(painter, picture, hasFocus() ? preview::Medium::FocusedScreen : preview::Medium::Screen);
}

bool PreviewWidget::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *const help = static_cast<QHelpEvent *>(event);
        for (const preview::CutText &text : std::as_const(cutTexts)) {
            const QRect place = fit().mapRect(text.place).toRect();
            if (!place.contains(help->pos())) continue;
            QToolTip::showText(help->globalPos(), plainToolTip(text.whole), this, place);
            return true;
        }
    }
    return QWidget::event(event);
}

void PreviewWidget::resizeEvent(QResizeEvent *)
{
    arrowDown->setGeometry(fit().mapRect(preview::arrowDownRect()).toRect());
    arrowUp->setGeometry(fit().mapRect(preview::arrowUpRect()).toRect());
    pictureButton->setGeometry(fit().mapRect(preview::pictureButtonRect()).toRect());
    sheetsButton->setGeometry(fit().mapRect(preview::sheetsButtonRect()).toRect());
}

void PreviewWidget::mousePressEvent(QMouseEvent *event)
{
    const std::optional<int> footswitch = footswitchAt(placeOf(*event));
    if (footswitch && event->button() == Qt::LeftButton) return choose(*footswitch);
    QWidget::mousePressEvent(event);
}

std::optional<int> PreviewWidget::footswitchAt(const QPointF &place) const
{
    const QPointF onCanvas = fit().inverted().map(place);
    for (int footswitch = 0; footswitch < presetCount; ++footswitch)
        if (preview::footswitchRect(footswitch).contains(onCanvas)) return footswitch;
    return std::nullopt;
}

void PreviewWidget::contextMenuEvent(QContextMenuEvent *event)
{
    const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
    const std::optional<int> footswitch = isByKey ? chosen : footswitchAt(event->pos());
    if (!footswitch) {
        QMenu::exec(actions(), event->globalPos(), nullptr, this);
        return;
    }
    choose(*footswitch);
    const QPoint corner = fit().map(preview::footswitchRect(chosen).bottomLeft()).toPoint();
    emit menuAsked({RecordId::Kind::Preset, currentBank(), chosen}, isByKey ? mapToGlobal(corner) : event->globalPos());
}

void PreviewWidget::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    // Where digits need Shift, it is theirs.
    const bool isPlain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (isPlain && key >= Qt::Key_0 && key <= Qt::Key_9) {
        if (!event->isAutoRepeat()) typeDigit(key - Qt::Key_0, event->timestamp());
        return;
    }
    switch (key) {
    case Qt::Key_Left:
        return choose(chosen - 1);
    case Qt::Key_Right:
        return choose(chosen + 1);
    case Qt::Key_Up:
        return choose(chosen + preview::switchesInRow);
    case Qt::Key_Down:
        return choose(chosen - preview::switchesInRow);
    case Qt::Key_PageUp:
        return page(1);
    case Qt::Key_PageDown:
        return page(-1);
    case Qt::Key_Backspace:
    case Qt::Key_Escape:
        firstDigit.reset();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void PreviewWidget::choosePath()
{
    auto *dialog = new QFileDialog(this, tr("Save picture"), tr("bank-%1").arg(currentBank()));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    const QString svgFilter = tr("SVG drawing (*.svg)");
    dialog->setNameFilters({tr("PNG picture (*.png)"), svgFilter});
    dialog->setDefaultSuffix(QStringLiteral("png"));
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog, svgFilter](const QString &filter) {
        dialog->setDefaultSuffix(filter == svgFilter ? QStringLiteral("svg") : QStringLiteral("png"));
    });
    connect(dialog, &QFileDialog::fileSelected, this, &PreviewWidget::savePicture);
    dialog->open();
}

bool PreviewWidget::savePicture(const QString &path)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        const bool svg = path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive);
        const bool written = svg ? writeSvg(&file, picture) : writePng(&file, picture);
        if (written && file.commit()) return true;
    }
    message::show(this, tr("Error"), tr("The picture could not be saved as %1: %2").arg(path, file.errorString()));
    return false;
}
