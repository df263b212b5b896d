#include "ui/preview/sheets.h"

#include "controller/recordslots.h"
#include "model/differences.h"
#include "ui/preview/previewdrawing.h"
#include "ui/preview/previewpainter.h"

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include <algorithm>
#include <map>
#include <vector>

namespace sheets {

namespace {

constexpr double marginMillimetres = 10;
constexpr int resolution = 1200;

// Lengths on a page are those of the picture's canvas, which is as wide as the page without its margins: one is about a
// seventh of a millimetre.
constexpr double width = preview::canvas.width();
constexpr double headHeight = 52;
constexpr double footHeight = 36;
constexpr double titleHeight = 66;
constexpr double lineHeight = 27;
constexpr double bankHeight = 2 * lineHeight + 9;  ///< in the set list
constexpr int picturesOnPage = 2;

using Scenes = std::vector<PreviewScene>;

/// The pages, one after the other.
class Pages : public preview::Drawing
{
    Q_DECLARE_TR_FUNCTIONS(Sheets)

public:
    Pages(QPdfWriter &pages, QPainter &target, const Scenes &toldBanks, const QString &toldName, const QDate &toldDate)
        : Drawing(target, toldBanks.front(), preview::Medium::Paper, cut), writer(pages), banks(toldBanks),
          name(toldName), date(toldDate), scale(writer.width() / width), height(writer.height() / scale),
          listed(static_cast<std::size_t>((height - headHeight - titleHeight - footHeight) / bankHeight))
    {}

    void paint()
    {
        for (std::size_t from = 0; from < banks.size(); from += listed)
            paintList(from);
        for (std::size_t from = 0; from < banks.size(); from += picturesOnPage)
            paintPictures(from);
    }

private:
    /// What stands on every page.
    void begin()
    {
        if (page++ > 0) writer.newPage();
        painter.resetTransform();
        painter.scale(scale, scale);
        const QRectF head(0, 0, width, 30);
        text(head.adjusted(0, 0, -200, 0), name, preview::bold(20), ink.text);
        text(head, date.toString(Qt::ISODate), preview::regular(18), ink.text, Qt::AlignRight);
        line({head.bottomLeft(), head.bottomRight()}, QPen(ink.outline, 1.5));
        const QString number = tr("%1 / %2").arg(page).arg(pagesOf(listed) + pagesOf(picturesOnPage));
        text({0, height - 24, width, 24}, number, preview::regular(18), ink.text, Qt::AlignHCenter);
    }

    std::size_t pagesOf(std::size_t onPage) const { return (banks.size() + onPage - 1) / onPage; }

    void paintList(std::size_t from)
    {
        begin();
        text({0, headHeight, width, 40}, tr("SET LIST"), preview::bold(30), ink.text);
        double y = headHeight + titleHeight;
        for (std::size_t bank = from; bank < std::min(from + listed, banks.size()); ++bank, y += bankHeight)
            paintBank(banks[bank], y);
    }

    /// A bank in the set list: its presets stand as the footswitches do, from the foot upwards.
    void paintBank(const PreviewScene &bank, double y)
    {
        constexpr double left = 362;
        constexpr double column = (width - left) / preview::switchesInRow;
        line({{0, y - 5}, {width, y - 5}}, QPen(ink.halfLit, 1));
        text({0, y, 52, 2 * lineHeight}, QString::number(bank.bank), preview::bold(30), ink.text, Qt::AlignRight);
        text({70, y, left - 86, 2 * lineHeight}, bank.bankName, preview::bold(24), ink.text);
        for (int preset = 0; preset < presetCount; ++preset) {
            const int row = preset / preview::switchesInRow, inRow = preset % preview::switchesInRow;
            const QRectF place(left + inRow * column, y + row * lineHeight, column, lineHeight);
            text(place, QString::number(preset), preview::regular(17), ink.quiet);
            text(place.adjusted(18, 0, -8, 0), switchOf(bank, preset).name, preview::regular(17), ink.text);
        }
    }

    void paintPictures(std::size_t from)
    {
        begin();
        const double room = (height - headHeight - footHeight) / picturesOnPage;
        painter.translate(0, headHeight);
        for (std::size_t bank = from; bank < std::min(from + picturesOnPage, banks.size()); ++bank) {
            preview::paint(painter, banks[bank], preview::Medium::Paper);
            paintMessages(banks[bank], room - preview::canvas.height() - 4);
            painter.translate(0, room);
        }
    }

    /// What each footswitch sends: the picture tells that of one alone. The messages are broken into lines if there is
    /// room for all of them, else they have one line each.
    void paintMessages(const PreviewScene &bank, double room)
    {
        constexpr double left = 286;
        const QFont lineFont = preview::regular(17);
        std::map<int, QStringList> messages;
        int lines = 0;
        for (int number = 0; number < presetCount; ++number)
            if (const QStringList &midi = switchOf(bank, number).midi; !midi.isEmpty()) {
                messages[number] = preview::brokenLines(midi.join(QStringLiteral("; ")), lineFont, width - left - 14);
                lines += static_cast<int>(messages[number].size());
            }
        const bool fit = lines * lineHeight <= room;
        double y = preview::canvas.height() + 4;
        for (const auto &[number, broken] : messages) {
            const PreviewScene::Footswitch &footswitch = switchOf(bank, number);
            text({14, y, 24, lineHeight}, QString::number(number), preview::bold(17), ink.text);
            text({38, y, left - 54, lineHeight}, footswitch.name, preview::bold(17), ink.text);
            for (const QString &words : fit ? broken : QStringList(footswitch.midi.join(QStringLiteral("; ")))) {
                text({left, y, width - left - 14, lineHeight}, words, lineFont, ink.text);
                y += lineHeight;
            }
        }
    }

    static const PreviewScene::Footswitch &switchOf(const PreviewScene &bank, int number)
    {
        return bank.footswitches[static_cast<std::size_t>(number)];
    }

    QPdfWriter &writer;
    const Scenes &banks;
    const QString name;
    const QDate date;
    const double scale;        ///< dots a length
    const double height;       ///< of a page
    const std::size_t listed;  ///< banks on a page of the set list
    std::size_t page = 0;
    QVector<preview::CutText> cut;
};

bool paint(QIODevice *file, const Scenes &banks, const QString &name, const QDate &date)
{
    QPdfWriter writer(file);
    writer.setTitle(name);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres),
                          QPageLayout::Millimeter);
    writer.setResolution(resolution);
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    Pages(writer, painter, banks, name, date).paint();
    return painter.end();
}

}  // namespace

std::set<int> banksWithContent(DataFromDevice &data)
{
    std::set<RecordId> records;
    for (int bank = 0; bank < bankCount; ++bank)
        records.merge(recordsOfBank(bank));
    const UnitPart known = knownPart(data, records);
    std::set<int> banks;
    for (const Difference &difference : differences(known.content, emptyContent(), known.records))
        banks.insert(difference.record.number);
    return banks;
}

QString save(const QString &path, const DataFromDevice &data, const std::set<int> &banks, const QString &name,
             const QDate &date)
{
    if (banks.empty()) return QObject::tr("There is no bank to show.");
    Scenes scenes;
    for (const int bank : banks)
        scenes.push_back(PreviewScene::of(&data, bank, 0));
    QSaveFile file(path);
    const bool isSaved = file.open(QIODevice::WriteOnly) && paint(&file, scenes, name, date) && file.commit();
    return isSaved ? QString() : QObject::tr("The sheets could not be saved as %1: %2").arg(path, file.errorString());
}

}  // namespace sheets
