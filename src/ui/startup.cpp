#include "ui/startup.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QWidget>

namespace startup {

void prepareScreen()
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
}

void prepareApplication()
{
    for (const char *name : {"Bold", "Regular", "SemiBold", "ExtraBold", "Light"})
        QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/OpenSans-%1.ttf").arg(QLatin1String(name)));
    QApplication::setDesktopFileName(QStringLiteral("kora"));  // of kora.desktop: its icon in the task bar
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(look::darkPalette());
    QApplication::setFont(look::pixelFont(DataFromDevice::fontTabs));
}

void showFrameless(QWidget &window)
{
    QWidget *const focused = window.focusWidget();
    window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowTitleHint | Qt::CustomizeWindowHint);
    if (focused) focused->setFocus();  // new flags make the window forget it
    window.show();
}

}  // namespace startup
