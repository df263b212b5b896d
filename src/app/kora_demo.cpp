#include "app/fileunit.h"
#include "app/tour.h"
#include "simulator/unitport.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/startup.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

/// The editor with a virtual unit: for trying it out, and with --tour for showing that it works.
int main(int argc, char **argv)
{
    startup::prepareScreen();
    startup::fitToScreen(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);  // the tour answers the file dialog
    QApplication application(argc, argv);
    startup::prepareApplication();
    QApplication::setApplicationName(
        QStringLiteral("kora-demo"));  // a real unit's log and safety copies are left alone

    QCoreApplication::setApplicationVersion(QStringLiteral(KORA_VERSION));
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("The KORA editor together with a virtual unit."));
    const QCommandLineOption tourOption(QStringLiteral("tour"),
                                        QStringLiteral("Drive the editor through all of its pages, check what the unit "
                                                       "then holds, and save screenshots in DIRECTORY."),
                                        QStringLiteral("DIRECTORY"));
    options.addOption(tourOption);
    const QCommandLineOption compareOption(
        QStringLiteral("compare"),
        QStringLiteral("A screenshot of the tour must look like the one of its name in DIRECTORY, if there is one."),
        QStringLiteral("DIRECTORY"));
    options.addOption(compareOption);
    options.addHelpOption();
    options.addVersionOption();
    const QString file = startup::fileArgument(options, application);

    UnitPort unit;
    const PortLister unitsPort = [&unit] {
        const std::string location = unit.location();
        return location.empty() ? QStringList() : QStringList(QString::fromStdString(location));
    };
    MainWindow window(unitsPort, nullptr, {}, makeFileUnit);
    window.show();
    if (!file.isEmpty()) window.workOn(file);
    if (!options.isSet(tourOption)) {
        QTextStream(stdout) << "The virtual unit answers on " << QString::fromStdString(unit.location()) << Qt::endl;
        return application.exec();
    }

    Tour(window, unit, options.value(tourOption), options.value(compareOption)).run();
    window.close();
    return EXIT_SUCCESS;
}
