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
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(look::darkPalette());
    QApplication::setFont(look::pixelFont(DataFromDevice::fontTabs));
}

void showFrameless(QWidget &window)
{
    window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowTitleHint | Qt::CustomizeWindowHint);
    window.show();
}

}  // namespace startup
