#pragma once

#include "ui/preview/previewdrawing.h"

namespace preview {

/// The chosen footswitch, told in full: header, signal path, switch outputs, MIDI, expression pedal. Or why it cannot
/// be told.
class Panels : public Drawing
{
    Q_DECLARE_TR_FUNCTIONS(PreviewScene)

public:
    Panels(QPainter &target, const PreviewScene &pictured, Medium onto, QVector<CutText> &cut);

    void paint();

private:
    void paintHeader();
    /// The panel with its title; returns the place of the first line below that.
    QRectF paintPanel(const QRectF &rect, const QString &title);
    /// The box of a loop (column 0: the buffer) or of a switch output.
    QRectF paintBox(int column, double y, const PreviewScene::Box &box);
    /// The signal runs from IN to OUT: through a loop that is on, below one that is off.
    void paintSignalPath();
    /// Every switch output is a contact: closed, open, either, or left as it is.
    void paintOutputs();
    /// The sentences are broken into lines if there is room for all of them, else they are small with one line each.
    void paintMidi();
    void paintPedal();

    const PreviewScene::Footswitch &told;
    const QRectF header;
};

}  // namespace preview
