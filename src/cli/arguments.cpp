#include "cli/arguments.h"

#include "cli/failure.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

using namespace cli;

namespace {

using Kind = RecordId::Kind;

/// A command as a user writes it. It takes the options that its syntax names, and those for every command.
struct Syntax
{
    Command command;
    const char *name;
    int leastOperands;
    int mostOperands;
    const char *arguments;
    const char *description;
};

constexpr Syntax commands[] = {
    {Command::Info, "info", 0, 0, "", "tell port, texts, firmware and numbers"},
    {Command::Backup, "backup", 1, 1, "FILE [--banks LIST]", "read the unit, or those banks, and write the file"},
    {Command::Restore, "restore", 1, 1, "FILE [--only PARTS] [--banks LIST] [--dry-run] [--no-safety-copy] [--yes]",
     "write what differs in the file, and read it back"},
    {Command::Compare, "compare", 1, 2, "FILE [FILE2]", "the unit with a file, or two files; a line a value"},
    {Command::Show, "show", 1, 1, "FILE|unit [--banks LIST]", "print what a file or the unit holds"},
    {Command::Clear, "clear", 0, 0, "--banks LIST|--all [--no-safety-copy] [--yes]", "write empty content"},
    {Command::Copy, "copy", 2, 2, "FROM TO [--no-safety-copy]", "a bank (7) or a preset (7.3) onto another"},
    {Command::Swap, "swap", 2, 2, "A B [--no-safety-copy]", "exchange two banks or two presets"},
    {Command::Firmware, "firmware", 1, 1, "IMAGE [--no-safety-copy] [--yes]",
     "upload an image; the unit restarts and installs it"},
};

struct Part
{
    const char *name;
    Kind kind;
};

constexpr Part parts[] = {
    {"settings", Kind::Settings},      {"midi-in", Kind::MidiIn},          {"expression-pedal", Kind::ExpressionPedal},
    {"switch-outs", Kind::SwitchOuts}, {"midi-devices", Kind::MidiDevice}, {"banks", Kind::Bank},
};

// Headings, paragraphs and lists look as help2man knows them.
constexpr char about[] = R"(
Arguments:
  FILE is a backup (.kora), or - for standard input or output. LIST is banks from
  0 to 99 and ranges of them, as in 0-9,20. PARTS are some of settings, midi-in,
  expression-pedal, switch-outs, midi-devices and banks, with commas between.

  What a file leaves out is neither compared nor written. Identity, firmware
  version and calibration are set on the unit itself: they are not written, and
  count as no difference.

  restore, clear and firmware save what the unit holds before they write to it,
  copy and swap save what they write over. clear, firmware and a restore of
  differences ask first; where there is no terminal to ask on they need --yes.

JSON:
  info tells port, texts, firmware and numbers. compare tells differences, a list
  of place, from and to, and apart from them setOnUnit, a list alike. restore,
  clear, copy and swap tell differences, written (how many of them the unit now
  holds as wanted) and remaining (what differs still, a list alike). show tells
  what a file would, backup file and records, firmware bytes.

Exit status:
  0    done, or nothing differs
  1    something differs (compare, --dry-run), does not read back as written, or
       was not to be done when asked
  2    wrong usage, or --yes is missing where there is no terminal
  3    no unit was found
  4    the unit refused, or the line failed
  5    a file cannot be read or written or is no backup
  130  interrupted (Ctrl+C) between two exchanges; what was written is told

)";

constexpr char examples[] = R"(
Files:
  ~/.local/share/kora/safety
                    the newest 20 safety copies; the editor offers them as well

Examples:
  kora-cli backup kora.kora
                    save the whole unit
  kora-cli restore kora.kora --only banks --banks 0-9 --dry-run
                    tell in what the first ten banks differ from the backup
  kora-cli copy 7.3 8.0
                    copy a preset
)";

QCommandLineOption flag(const QStringList &names, const char *description)
{
    return {names, QString::fromLatin1(description)};
}

QCommandLineOption valued(const char *name, const char *description, const char *value)
{
    return {QString::fromLatin1(name), QString::fromLatin1(description), QString::fromLatin1(value)};
}

void addOptions(QCommandLineParser &parser)
{
    parser.addOptions({
        valued("port", "The unit's serial port (default: search all).", "PATH"),
        valued("wait", "Search for the unit so long, 1 to 3600 (default: 10).", "SECONDS"),
        flag({"json"}, "Print results as one JSON object."),
        flag({"q", "quiet"}, "Print only what was asked for, and errors."),
        valued("banks", "Only these banks.", "LIST"),
        valued("only", "Only these parts.", "PARTS"),
        flag({"all"}, "The whole unit."),
        flag({"dry-run"}, "Write nothing, tell what would be written."),
        flag({"no-safety-copy"}, "Write without a safety copy."),
        flag({"y", "yes"}, "Do not ask."),
        flag({"h", "help"}, "Print this help."),
        flag({"version"}, "Print the version."),
    });
}

[[noreturn]] void refuse(const QString &reason)
{
    throw Failure{wrongUsage, reason + QStringLiteral("; see kora-cli --help")};
}

/// A number of one or two digits, which is what banks have; -1 for anything else.
int bankNumber(const QString &text)
{
    static const QRegularExpression digits(QStringLiteral("\\A[0-9]{1,2}\\z"));
    return digits.match(text).hasMatch() ? text.toInt() : -1;
}

std::set<int> bankList(const QString &text)
{
    std::set<int> banks;
    for (const QString &range : text.split(',')) {
        const int first = bankNumber(range.section('-', 0, 0));
        const int last = bankNumber(range.section('-', range.contains('-') ? 1 : 0));
        if (first < 0 || last < first) refuse(QStringLiteral("--banks %1: banks are like 0-9,20").arg(text));
        for (int bank = first; bank <= last; ++bank)
            banks.insert(bank);
    }
    return banks;
}

std::set<Kind> partList(const QString &text)
{
    std::set<Kind> kinds;
    for (const QString &name : text.split(',')) {
        const auto *part =
            std::ranges::find_if(parts, [&](const Part &row) { return name == QLatin1String(row.name); });
        if (part == std::end(parts)) refuse(QStringLiteral("--only %1: there is no part \"%2\"").arg(text, name));
        kinds.insert(part->kind);
    }
    return kinds;
}

int seconds(const QString &text)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < 1 || number > 3600) refuse(QStringLiteral("--wait %1: 1 to 3600 seconds").arg(text));
    return number;
}

const Syntax &syntaxOf(const QString &name)
{
    const auto *syntax =
        std::ranges::find_if(commands, [&](const Syntax &row) { return name == QLatin1String(row.name); });
    if (syntax == std::end(commands)) refuse(QStringLiteral("there is no command \"%1\"").arg(name));
    return *syntax;
}

void checkOptions(const QCommandLineParser &parser, const Syntax &syntax)
{
    for (const char *option : {"banks", "only", "all", "dry-run", "no-safety-copy", "yes"})
        if (parser.isSet(option) && !QString(syntax.arguments).contains(QLatin1String("--") + option))
            refuse(QStringLiteral("%1 has no option --%2").arg(syntax.name, option));
}

void checkTogether(const Arguments &arguments)
{
    if (arguments.command == Command::Clear && arguments.all == arguments.banks.has_value())
        refuse(QStringLiteral("clear: either --banks or --all"));
    if (arguments.banks && arguments.onlyParts && !arguments.onlyParts->contains(Kind::Bank))
        refuse(QStringLiteral("--banks: --only leaves the banks out"));
    if (arguments.operands.count(QStringLiteral("-")) > 1) refuse(QStringLiteral("- can be one file only"));
    if (arguments.command == Command::Copy || arguments.command == Command::Swap)
        if (parseSlot(arguments.operands[0]).preset.has_value() != parseSlot(arguments.operands[1]).preset.has_value())
            refuse(QStringLiteral("a bank and a preset do not fit each other"));
}

}  // namespace

bool Arguments::covers(const RecordId &id) const
{
    const Kind kind = id.kind == Kind::Preset ? Kind::Bank : id.kind;
    if (onlyParts && !onlyParts->contains(kind)) return false;
    return !banks || (kind == Kind::Bank ? banks->contains(id.number) : onlyParts.has_value());
}

std::set<RecordId> Arguments::covered(const std::set<RecordId> &records) const
{
    std::set<RecordId> result;
    std::ranges::copy_if(records, std::inserter(result, result.end()),
                         [this](const RecordId &id) { return covers(id); });
    return result;
}

Arguments cli::parseArguments(const QStringList &commandLine)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(commandLine)) refuse(parser.errorText());
    Arguments arguments;
    if (parser.isSet("help")) return arguments;
    arguments.command = Command::Version;
    if (parser.isSet("version")) return arguments;

    arguments.operands = parser.positionalArguments();
    if (arguments.operands.isEmpty()) refuse(QStringLiteral("no command"));
    const Syntax &syntax = syntaxOf(arguments.operands.takeFirst());
    if (arguments.operands.size() < syntax.leastOperands || arguments.operands.size() > syntax.mostOperands ||
        arguments.operands.contains(QString()))
        refuse(QStringLiteral("usage: kora-cli %1 %2").arg(syntax.name, syntax.arguments).trimmed());
    checkOptions(parser, syntax);
    arguments.command = syntax.command;
    arguments.port = parser.value("port");
    if (parser.isSet("port") && arguments.port.isEmpty()) refuse(QStringLiteral("--port: no path"));
    if (parser.isSet("wait")) arguments.wait = seconds(parser.value("wait"));
    if (parser.isSet("banks")) arguments.banks = bankList(parser.value("banks"));
    if (parser.isSet("only")) arguments.onlyParts = partList(parser.value("only"));
    arguments.json = parser.isSet("json");
    arguments.quiet = parser.isSet("quiet");
    arguments.yes = parser.isSet("yes");
    arguments.all = parser.isSet("all");
    arguments.dryRun = parser.isSet("dry-run");
    arguments.noSafetyCopy = parser.isSet("no-safety-copy");
    checkTogether(arguments);
    return arguments;
}

QString cli::helpText()
{
    QString text = QStringLiteral("Usage: kora-cli [OPTION...] COMMAND [ARGUMENT...]\n"
                                  "Backs up, restores, compares and edits a KORA unit from scripts.\n\nCommands:\n");
    for (const Syntax &syntax : commands)
        text += QStringLiteral("  %1\n                    %2\n")
                    .arg(QStringLiteral("%1 %2").arg(syntax.name, syntax.arguments).trimmed(), syntax.description);
    QCommandLineParser parser;
    addOptions(parser);
    const QString options = parser.helpText();
    text += about + options.mid(options.indexOf(QLatin1String("Options:"))) + examples;
    return text.replace(QRegularExpression(QStringLiteral("<([A-Z]+)>")), QStringLiteral("\\1  "));
}

QString cli::versionText() { return QStringLiteral("kora-cli " KORA_VERSION); }

Slot cli::parseSlot(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("\\A([0-9]{1,2})(?:\\.([0-9]))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) refuse(QStringLiteral("%1: a bank is like 7, a preset like 7.3").arg(text));
    Slot slot{match.captured(1).toInt(), std::nullopt};
    if (!match.captured(2).isEmpty()) slot.preset = match.captured(2).toInt();
    return slot;
}
