#include "link/connection.h"
#include "ui/mainwindow.h"
#include "ui/startup.h"

#include <QApplication>

int main(int argc, char **argv)
{
    startup::prepareScreen();
    QApplication application(argc, argv);
    Connection::enableLog = true;
    startup::prepareApplication();

    MainWindow window;
    startup::showFrameless(window);
    return application.exec();
}
