#include <QApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);  // safety copies do not go to the user's
    return RUN_ALL_TESTS();
}
