#pragma once

#include "simulator/unitport.h"
#include "ui/mainwindow.h"

#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QThread>

#include <functional>
#include <gtest/gtest.h>

/// The real main window with a virtual unit behind a pseudo-terminal.
class Editor : public testing::Test
{
protected:
    UnitPort unit{musicianContent(), std::chrono::milliseconds(50)};
    PortLister unitsPort = [this] {
        const std::string location = unit.location();
        return location.empty() ? QStringList() : QStringList(QString::fromStdString(location));
    };
    MainWindow window{unitsPort};

    void SetUp() override
    {
        window.show();
        ASSERT_TRUE(becomes([this] { return isConnected(); }));
        ASSERT_TRUE(settles());
        unit.takeRequests();
    }

    void TearDown() override { window.close(); }

    template <typename Widget>
    Widget &find(const QString &name) const
    {
        auto *const found = window.findChild<Widget *>(name);
        if (!found) throw std::runtime_error("no widget " + name.toStdString());
        return *found;
    }

    /// The widget in a cell of "tableWidget_" + `table`.
    template <typename Widget>
    Widget &cell(const QString &table, int row, int column) const
    {
        return dynamic_cast<Widget &>(*find<QTableWidget>("tableWidget_" + table).cellWidget(row, column));
    }

    QString status() const { return find<QLabel>("label_deviceStatus").text(); }
    bool isConnected() const { return status() == "DEVICE CONNECTED"; }

    static bool becomes(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 10000); }

    /// Waits until the editor asks for nothing more. Its requests run one after the other, so those that were made
    /// before a marker have been answered when the marker is reached; their answers may lead to new ones.
    bool settles()
    {
        for (int quietRounds = 0; quietRounds < 2;) {
            const std::size_t seen = exchanges;
            const auto reached = std::make_shared<std::atomic<bool>>(false);
            auto *const marker = new QObject;
            marker->moveToThread(window.findChild<QThread *>());
            QMetaObject::invokeMethod(marker, [=] {
                *reached = true;
                marker->deleteLater();
            });
            if (!becomes([&] { return reached->load(); })) return false;
            QCoreApplication::processEvents();  // the answers
            quietRounds = seen == exchanges ? quietRounds + 1 : 0;
        }
        return true;
    }

    /// Everything asked for since the last call, once nothing more comes.
    std::vector<std::string> requests()
    {
        EXPECT_TRUE(settles());
        return unit.takeRequests();
    }

    void click(const QString &button) { QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton); }

    /// Opens the box's list, moves to the item and takes it.
    static void choose(QComboBox &box, const QString &item)
    {
        ASSERT_GE(box.findText(item), 0) << item.toStdString();
        box.showPopup();
        box.view()->setCurrentIndex(box.model()->index(box.findText(item), 0));
        QTest::keyClick(box.view(), Qt::Key_Return);
    }

    Editor()
    {
        unit.recordRequests();
        unit.onExchange([this](const std::string &, const std::string &) { ++exchanges; });
    }
    ~Editor() override { unit.onExchange({}); }

private:
    std::atomic<std::size_t> exchanges = 0;
};
