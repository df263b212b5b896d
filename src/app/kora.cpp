#include "app/fileunit.h"
#include "link/connection.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/startup.h"

#include <QApplication>
#include <QCommandLineParser>

int main(int argc, char **argv)
{
    startup::prepareScreen();
    startup::fitToScreen(argc, argv);
    QApplication application(argc, argv);
    Connection::enableLog = true;
    startup::prepareApplication();

    QCoreApplication::setApplicationVersion(QStringLiteral(KORA_VERSION));
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("The editor for the KORA guitar floor controller."));
    options.addHelpOption();
    options.addVersionOption();
    const QString file = startup::fileArgument(options, application);

    MainWindow window(systemPortLocations, nullptr, {}, makeFileUnit);
    window.show();
    if (!file.isEmpty()) window.workOn(file);
    return application.exec();
}
