#pragma once

#include "ui/preview/previewdrawing.h"

namespace preview {

/// The page and on it the unit, seen from above: display, wah pads and footswitches.
class Face : public Drawing
{
    Q_DECLARE_TR_FUNCTIONS(PreviewScene)

public:
    using Drawing::Drawing;

    void paint();

private:
    /// Every pixel of the canvas; on the screen it takes the form of a page.
    void paintGround();
    void paintDisplay();
    void paintWahPad(const QRectF &rect, const QString &title, const PreviewScene::WahPad &pad);
    void paintFootswitch(int number);
    /// What the footswitch does, as a row of small shapes: the buffer, the loops, the switch outputs (round), MIDI.
    void paintGlyphs(QPointF place, const PreviewScene::Footswitch &pictured);
};

}  // namespace preview
