#pragma once

#include "model/unitcontent.h"
#include "ui/preview/previewpainter.h"
#include "ui/preview/previewscene.h"
#include "ui/shownbank.h"

#include <QTransform>
#include <QWidget>

#include <optional>

class QPushButton;

/// The preview page: what a bank does on stage, in one picture. It shows what the model holds and asks the unit for a
/// bank only when the user goes to it, by the arrows, the page keys or by typing its number.
class PreviewWidget : public QWidget
{
    Q_OBJECT

public:
    explicit PreviewWidget(QWidget *parent = nullptr);

    /// The shown bank, 0 to 99.
    int currentBank() const { return shown.number(); }
    /// Shows the bank that was chosen elsewhere; it is asked for only where it has not been read.
    void follow(int bank);
    /// The same without asking for it; whether it has to be read.
    bool moveTo(int bank);
    /// Asks for the shown bank; nothing without a unit.
    void requestBank();
    /// Asks again for the shown bank if it could not be read.
    void retry();
    void readFailed(int bank);

    const PreviewScene &scene() const { return picture; }
    /// Writes the picture for printing, dark on white: an SVG if the path ends in ".svg", else a PNG three times the
    /// page's size. False, after a message to the user, when the file cannot be written.
    bool savePicture(const QString &path);

signals:
    void getBankAndPresetData(int bank);
    /// The user has gone to another bank.
    void bankChosen(int bank);
    /// The user wants sheets of the shown bank, or of all that hold anything.
    void sheetsAsked(int bank);
    void allSheetsAsked();
    /// The user asks what can be done with a footswitch's preset.
    void menuAsked(const RecordId &place, const QPoint &position);

public slots:
    void loadDataFromDevice(DataFromDevice *dataFromDevice);
    void gotBankAndPresetData(int bank);
    void gotMidiDevicesData();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    QPushButton *addArrow(const char *icon, const QString &name, int step);
    QPushButton *addSaveButton(const char *objectName, const QString &name);
    void makeSheetsMenu();
    void page(int step);
    void showNewBank();
    /// Goes to a bank as its number is typed: a digit within a second of the one before makes a number with it. `time`
    /// is that of the key, in milliseconds.
    void typeDigit(int digit, ulong time);
    void choose(int footswitch);
    /// The footswitch that a place in this widget lies on.
    std::optional<int> footswitchAt(const QPointF &place) const;
    void choosePath();
    void refresh();
    void enable(QPushButton *arrow, bool enabled);
    /// From the picture's canvas to this widget: as large as fits, centred.
    QTransform fit() const;

    ShownBank shown;
    bool isUnreadable = false;  ///< the shown bank could not be read
    int chosen = 0;
    std::optional<int> firstDigit;  ///< of a number that a second digit may complete
    ulong typedAt = 0;              ///< milliseconds, by the clock of the key events
    PreviewScene picture;
    QVector<preview::CutText> cutTexts;
    QPushButton *arrowDown;
    QPushButton *arrowUp;
    QPushButton *pictureButton;
    QPushButton *sheetsButton;
};
