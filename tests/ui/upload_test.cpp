// A firmware image goes to the unit that it was chosen for, or the user is told.

#include "ui/editor.h"

#include <QTemporaryDir>

namespace {

class Upload : public Editor
{
protected:
    QString file(qint64 bytes)
    {
        QFile image(folder.filePath("image.bin"));
        EXPECT_TRUE(image.open(QIODevice::WriteOnly) && image.resize(bytes));
        return image.fileName();
    }
    void start(const QString &path, const std::function<void()> &meanwhile = {})
    {
        onDialog([=](QWidget &dialog) {
            auto &files = dynamic_cast<QFileDialog &>(dialog);
            EXPECT_EQ(files.windowTitle(), "Open KORA Firmware File");
            EXPECT_EQ(files.nameFilters(), QStringList("KORA Firmware (*.bin)"));
            if (meanwhile) meanwhile();
            files.findChild<QLineEdit *>("fileNameEdit")->setText(path);
            static_cast<QDialog &>(files).done(path.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
        });
        window.updateFirmware();
    }
    bool isBusy() const
    {
        const bool veil = find<QLabel>("label_loading").isVisible();
        EXPECT_EQ(find<QLabel>("label_loadingText").isVisible(), veil);
        EXPECT_EQ(find<QWidget>("progressBar_loading").isVisible(), veil);
        for (const char *const covered : {"pushButton_menu", "pushButton_settingsTab", "widget_presets"})
            EXPECT_EQ(find<QWidget>(covered).isEnabled(), !veil) << covered;
        return veil;
    }

    QTemporaryDir folder;
};

TEST_F(Upload, ShowsThatItIsBusyAndHowFarItIs)
{
    start(QString());
    EXPECT_FALSE(isBusy());
    start(file(983040));
    EXPECT_TRUE(find<QLabel>("label_transfer").isVisible()) << "a safety copy comes first";
    ASSERT_TRUE(becomes([this] { return find<QLabel>("label_loadingText").isVisible(); }));
    EXPECT_TRUE(isBusy());
    EXPECT_FALSE(find<QLabel>("label_transfer").isVisible());
    EXPECT_EQ(find<QLabel>("label_loadingText").text(), "SENDING NEW FIRMWARE TO DEVICE. PLEASE WAIT");
    window.updateFirmware();  // not a second one
    auto &progress = *window.findChild<QObject *>("progressBar_loading");
    ASSERT_TRUE(becomes([&] { return progress.property("value").toInt() >= 2; }));
    closeWithin(2000);  // between two chunks
    EXPECT_EQ(taken().back().substr(0, 5), "WFD|A");
}

TEST_F(Upload, GoesToTheUnitItWasChosenForOnly)
{
    const auto told = nextBox();
    start(file(100), [this] {
        unit.unplug();
        click("pushButton_midiMidiIn");
        EXPECT_TRUE(becomes([this] { return !isConnected(); }));
        unit.plugIn();
        EXPECT_TRUE(becomes([this] { return isConnected() && settles(); }));
        taken();
    });
    EXPECT_TRUE(becomes([&] { return !told->isEmpty(); }));
    EXPECT_EQ(requests(), Requests{});
}

TEST_F(Upload, RefusesWhatIsNoImage)
{
    const std::pair<QString, QString> cases[] = {
        {file(3LL << 30), "UPLOAD FAILED|FIRMWARE UPLOAD FAILED"},  // sparse
        {folder.filePath("missing.bin"), "Error|File doesn't exist"},
        {"/dev/zero", "Error|File doesn't exist"},
    };
    for (const auto &[path, expected] : cases) {
        const auto told = nextBox();
        start(path);
        ASSERT_TRUE(becomes([&, box = told] { return !box->isEmpty(); }));
        EXPECT_EQ(*told, expected);
        EXPECT_TRUE(settles());
        EXPECT_FALSE(isBusy());
    }
    std::shared_ptr<QString> asked;
    start(file(0), [&] { asked = nextBox(QMessageBox::No); });
    EXPECT_TRUE(asked->startsWith("FIRMWARE UPGRADE|The file is empty"));
    const Requests sent = requests();
    EXPECT_TRUE(std::none_of(sent.begin(), sent.end(), [](const auto &text) { return text.starts_with("WFD"); }));
}

}  // namespace
