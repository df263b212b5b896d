#include "cli/console.h"

#include "archive/unitfile.h"
#include "cli/failure.h"
#include "cli/interrupt.h"

#include <QFile>
#include <QProcess>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <deque>
#include <filesystem>

using namespace cli;

namespace {

constexpr int brokenPipe = 13;  // SIGPIPE, which not every system has

/// Writes all bytes at once; the `errno` of what went wrong, or 0.
int writeAll(std::FILE *stream, const QByteArray &bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream) == size && std::fflush(stream) == 0 ? 0 : errno;
}

/// As far as the file system tells: the stream of this name leads to a device that is not the null device. Where
/// streams have no such names, none is a terminal.
bool isTerminal(const char *stream)
{
    std::error_code ignored;
    return std::filesystem::is_character_file(stream, ignored) &&
           !std::filesystem::equivalent(stream, "/dev/null", ignored);
}

bool isErrorTerminal() { return isTerminal("/dev/stderr"); }

}  // namespace

void cli::occupyStandardStreams()
{
    // The system gives a new file the lowest descriptor that is free.
    static std::deque<QFile> taken;
    do
        taken.emplace_back(QProcess::nullDevice()).open(QIODevice::ReadOnly);
    while (taken.back().handle() >= standardInput && taken.back().handle() <= standardInput + 2);
    taken.pop_back();
}

QString cli::printable(const QString &text)
{
    QString result;
    for (const char32_t code : text.toUcs4())
        result +=
            QChar::isPrint(code) ? QString::fromUcs4(&code, 1) : QStringLiteral("\\x{%1}").arg(code, 2, 16, QChar('0'));
    return result;
}

Console::Console(bool isJsonWanted, bool isQuiet) : json(isJsonWanted), quiet(isQuiet) {}

void Console::show(const QString &line)
{
    if (!json) results += printable(line).toUtf8() + '\n';
}

void Console::report(const QString &line)
{
    if (!quiet) show(line);
}

void Console::object(const QJsonObject &told)
{
    if (json) results += archive::jsonText(told);
}

void Console::content(const QByteArray &bytes) { results += bytes; }

void Console::flush()
{
    const int problem = writeAll(stdout, results);
    results.clear();
    if (problem == EPIPE) throw Failure{signalled + brokenPipe, {}};
    if (problem != 0) throw Failure{fileFailed, QStringLiteral("standard output: ") + std::strerror(problem)};
}

void Console::error(const QString &reason)
{
    if (!reason.isEmpty()) writeAll(stderr, "kora-cli: " + printable(reason).toUtf8() + '\n');
}

void Console::progress(const QString &what, int done, int total)
{
    const int percent = 100 * done / total;
    if (quiet || percent == shownPercent || !isErrorTerminal()) return;
    shownPercent = percent;
    writeAll(stderr, QStringLiteral("\r%1: %2 %").arg(what).arg(percent).toUtf8());
}

void Console::hideProgress()
{
    if (shownPercent >= 0) writeAll(stderr, "\r" + QByteArray(40, ' ') + "\r");
    shownPercent = -1;
}

bool Console::canAsk() { return isTerminal("/dev/stdin") && isErrorTerminal(); }

bool Console::confirms(const QString &question)
{
    writeAll(stderr, printable(question).toUtf8() + " [y/N] ");
    const QByteArray answer = interrupt::await([] {
        QFile input;
        input.open(standardInput, QIODevice::ReadOnly | QIODevice::Unbuffered);
        return input.readLine(256);
    });
    if (answer.isEmpty()) writeAll(stderr, "\n");
    const QByteArray word = answer.trimmed().toLower();
    return word == "y" || word == "yes";
}
