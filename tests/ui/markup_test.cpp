#include "ui/editor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTimer>

namespace {

const std::string markup = "<b>B</b>&amp;&x<img src='x'>";

/// Every name in the unit is markup.
class Markup : public Editor
{
protected:
    Markup()
    {
        unit.alter([](UnitMemory &memory) {
            memory.deviceInfo.firstText = memory.deviceInfo.secondText = markup;
            for (std::size_t bank = 0; bank < memory.banks.size(); ++bank) {
                memory.banks[bank].name = markup;
                for (PresetData &preset : memory.presets[bank])
                    preset.name = markup;
            }
            for (MidiDevice &device : memory.midiDevices) {
                device.name = markup;
                for (Controller &controller : device.controllers)
                    controller = {markup, 1};
            }
            memory.presets[0][0].footswitchFunction = FootswitchType::MidiModifier;
            memory.expressionPedal.midiDeviceNumber = 1;
        });
    }

    /// Looks through a window: nothing in it renders the markup or takes an '&' for a shortcut. Returns how many
    /// widgets show it.
    static int expectPlain(const QWidget &root)
    {
        const QString text = QString::fromStdString(markup);
        int shown = 0;
        for (const QWidget *const widget : root.findChildren<QWidget *>()) {
            const std::string name = widget->objectName().toStdString() + widget->metaObject()->className();
            if (const QString tip = widget->toolTip(); Qt::mightBeRichText(tip)) {
                EXPECT_TRUE(QTextDocumentFragment::fromHtml(tip).toPlainText().startsWith(text)) << name;
            }
            EXPECT_FALSE(widget->statusTip().contains(text) || widget->whatsThis().contains(text)) << name;
            if (const auto *const label = qobject_cast<const QLabel *>(widget); label && label->text().contains(text)) {
                EXPECT_EQ(label->textFormat(), Qt::PlainText) << name;
                EXPECT_EQ(label->buddy(), nullptr) << name;
                ++shown;
            }
            const auto *const button = qobject_cast<const QAbstractButton *>(widget);
            if (button && button->text().contains(text)) {
                EXPECT_TRUE(button->shortcut().isEmpty()) << name;
                ++shown;
            }
            if (const auto *const edit = qobject_cast<const QLineEdit *>(widget)) shown += edit->text() == text;
            if (const auto *const box = qobject_cast<const QComboBox *>(widget)) shown += box->findText(text) >= 0;
        }
        return shown;
    }

    /// What a click in a table opens, looked through and closed; the number of widgets that show the markup.
    int expectPlainDialog(const QString &table, int row, int column)
    {
        int shown = 0;
        onDialog([&shown](QWidget &dialog) {
            shown = expectPlain(dialog);
            static_cast<QDialog &>(dialog).reject();
        });
        clickCell(table, row, column);
        return shown;
    }
};

}  // namespace

TEST_F(Markup, IsShownAsItIsByTheWholeWindow)
{
    for (const char *page : {"midiDevicesTab", "midiExpressionPedal", "previewTab", "libraryTab", "presetsTab"}) {
        click(QString("pushButton_") + page);
        ASSERT_TRUE(settles());
    }
    EXPECT_GT(expectPlain(window), 150);
    EXPECT_GE(expectPlainDialog("midiDevices", 0, 4), 21);
    EXPECT_GE(expectPlainDialog("midi", 1, 4), 3);
}
