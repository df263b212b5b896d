#pragma once

#include <QVariantAnimation>
#include <QWidget>

/// Lights up a widget for a second and goes. The mouse does not notice it, and the widget's style stays as it is.
class Highlight : public QWidget
{
    Q_OBJECT

public:
    static constexpr int duration = 1000;  ///< milliseconds

    /// Lights up `widget`, anew if it still shines.
    static void lightUp(QWidget *widget);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    explicit Highlight(QWidget *widget);

    QVariantAnimation fading;
};
