#include "model/values.h"

#include "model/places.h"

#include <algorithm>

namespace {

bool isPrintable(const QVector<uint> &codes)
{
    return std::all_of(codes.begin(), codes.end(), [](uint code) { return QChar::isPrint(code); });
}

bool showsItself(const QString &text)
{
    return !text.isEmpty() && text == text.trimmed() && !text.startsWith('"') && isPrintable(text.toUcs4());
}

/// In quotes; a character above `highest` or without a face is told by its number.
QString quoted(const QString &text, uint highest)
{
    QString result = QStringLiteral("\"");
    for (const char32_t code : text.toUcs4()) {
        if (code > highest || !QChar::isPrint(code)) {
            result += QStringLiteral("\\x{%1}").arg(code, 2, 16, QLatin1Char('0'));
            continue;
        }
        if (code == '"' || code == '\\') result += '\\';
        result += QString::fromUcs4(&code, 1);
    }
    return result + '"';
}

}  // namespace

const char *wordFor(int number, const Range &range)
{
    if (range.isNone(number)) return "NONE";
    if (range.also != Range::Also::ToggleAndInactive) return nullptr;
    return number == inactiveValue ? "INACTIVE" : number == toggleValue ? "TOGGLE" : nullptr;
}

std::string nameText(const QString &name)
{
    std::string text = name.toStdString();
    std::erase_if(text, [](char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; });
    return text;
}

bool fitsFrame(std::string_view text)
{
    constexpr std::string_view parting{"\0\x02\x03\x1C\x1D\x1E\x1F", 7};
    return text.find_first_of(parting) == std::string_view::npos;
}

std::optional<QString> charactersOf(const std::string &text)
{
    const QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    QString characters = QString::fromUtf8(bytes);
    return characters.toUtf8() == bytes ? std::optional(std::move(characters)) : std::nullopt;
}

QString textOf(const std::string &text, const Range &)
{
    const auto characters = charactersOf(text);
    if (!characters) return quoted(QString::fromLatin1(text.data(), static_cast<int>(text.size())), 0x7F);
    return showsItself(*characters) ? *characters : quoted(*characters, QChar::LastValidCodePoint);
}

QString textOf(int number, const Range &range)
{
    const char *word = wordFor(number, range);
    return word ? QString::fromLatin1(word) : QString::number(number);
}

std::vector<ShownValue> valuesOf(const UnitContent &content, const RecordId &id)
{
    std::vector<ShownValue> values;
    const auto show = [&](const ValuePlace &place, const auto &row, const auto &value) {
        values.push_back({place.id, places::value(id, place), textOf(value, row.range), isWritable(row, value),
                          isInRange(value, row.range)});
    };
    visitRecord(content, id, [&](const auto &record) { forEachValue(show, record); });
    return values;
}
