// Sheets of banks, from the menu of the button to what stands on the pages.

#include "ui/editor.h"

#include <QFileDialog>
#include <QMenu>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

QVector<QStringList> matches(const QString &pattern, const QString &text)
{
    QVector<QStringList> found;
    for (auto match = QRegularExpression(pattern).globalMatch(text); match.hasNext();)
        found << match.next().capturedTexts();
    return found;
}

/// The texts on each page of a PDF that has no pixels, in the order of drawing; each ends with '|'.
QStringList pagesOf(const QString &path)
{
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    const QString pdf = QString::fromLatin1(bytes.constData(), bytes.size());  // also what follows a zero
    EXPECT_FALSE(pdf.contains("/Subtype /Image"));
    QMap<QString, QStringList> letters;  // by font, then by glyph
    for (const QStringList &font : matches("\n(\\d+) 0 obj\n<<[^>]*/ToUnicode (\\d+) 0 R", pdf)) {
        const QString map = pdf.section("\n" + font[2] + " 0 obj\n", 1).section('[', 1).section(']', 0, 0);
        for (const QString &code : ("<0000> " + map).split(' '))
            letters[font[1]] << QString(QChar(code.mid(1, 4).toUShort(nullptr, 16)));
    }
    QStringList pages;
    for (const QString &stream : pdf.split("stream\n").filter(QRegularExpression("^x\u009c"))) {
        const QString drawing = QString::fromLatin1(qUncompress(QByteArray("\0\1\0\0", 4) + stream.toLatin1()));
        QString font, texts;
        for (const QStringList &token : matches("/F(\\d+) |<(....)> Tj|ET\n", drawing)) {
            if (token.size() == 1) texts += '|';
            if (token.size() == 2) font = token[1];
            if (token.size() == 3) texts += letters[font].value(token[2].toInt(nullptr, 16));
        }
        if (!texts.isEmpty()) pages << texts.replace('\t', ' ');  // which is what a blank is told as
    }
    return pages;
}

/// A unit with one value in each of three banks.
UnitMemory threeBanks()
{
    UnitMemory memory = musicianContent();
    memory.banks = {};
    memory.presets = {};
    memory.banks[3].name = "CAFÉ";
    memory.banks[20].wahPad2Action = WahPadAction::TurnLoopOn;
    for (std::uint8_t slot = 1; slot <= 20; ++slot)
        memory.presets[99][7].controlChanges.push_back({1, slot, 77});
    return memory;
}

class Sheets : public Editor
{
protected:
    Sheets() : Editor(threeBanks()) {}

    /// Chooses an entry of the button's menu, and a file.
    void save(const QString &entry, const QString &path)
    {
        onDialog([path](QWidget &dialog) {
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(path);
            static_cast<QDialog &>(dynamic_cast<QFileDialog &>(dialog)).accept();
        });
        for (QAction *const action : find<QPushButton>("pushButton_saveSheets").menu()->actions())
            if (action->text() == entry) action->trigger();
    }
};

}  // namespace

TEST_F(Sheets, ReadWhatIsUnknownAndShowTheBanksThatHoldAnything)
{
    const QTemporaryDir folder;
    const std::tuple<QString, QString, QString> cases[] = {
        {"ALL BANKS WITH CONTENT...", "all", "SHEETS SAVED|all.pdf shows 3 banks."},
        {"SHOWN BANK...", "one", "SHEETS SAVED|one.pdf shows BANK 0."},
        {"SHOWN BANK...", "none/one", "Error|The sheets could not be saved as "}};
    for (const auto &[entry, name, words] : cases) {
        const auto told = nextBox();
        save(entry, folder.filePath(name));
        ASSERT_TRUE(becomes([&] { return !told->isEmpty() && settles(); }));
        EXPECT_TRUE(told->startsWith(words)) << told->toStdString();
    }
    EXPECT_EQ(unit.takeRequests().size(), 99U * 11U) << "each once, and not bank 0, which was known";

    const auto told = nextBox();
    click("pushButton_libraryTab");
    auto &table = find<QTableView>("tableView_library");
    table.selectionModel()->select(table.model()->index(20, 0), QItemSelectionModel::Select);
    trigger("SAVE SHEETS...", folder.filePath("selected"));
    ASSERT_TRUE(becomes([&] { return *told == "SHEETS SAVED|selected.pdf shows BANK 20."; })) << told->toStdString();

    const QStringList pages = pagesOf(folder.filePath("all.pdf"));
    EXPECT_EQ(QString(pages.value(0)).replace("||", "|").section('|', 2),
              "1 / 3|SET LIST|3|CAFÉ" + QString("%1|20%1|99%1|").arg("|0|1|2|3|4|5|6|7|8|9"));
    for (const QString part : {"KORA VIRTUAL UNIT|", "|2 / 3|", "|3|BANK|CAFÉ|", "|20|BANK|"})
        EXPECT_TRUE(pages.value(1).contains(part)) << part.toStdString();
    EXPECT_EQ(pages.value(2).replace('|', ' ').count(" = 77"), 20) << "all that a footswitch sends";
}
