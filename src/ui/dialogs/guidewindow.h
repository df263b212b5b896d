#pragma once

#include "ui/dialogs/framelessdialog.h"

/// The user's guide. It may stay open beside the main window.
class GuideWindow : public FramelessDialog
{
    Q_OBJECT

public:
    explicit GuideWindow(QWidget *parent = nullptr);
};
