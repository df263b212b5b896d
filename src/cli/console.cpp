#include "cli/console.h"

#include "archive/unitfile.h"
#include "cli/failure.h"
#include "cli/interrupt.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <unistd.h>

using namespace cli;

namespace {

/// Writes all bytes; the `errno` of what went wrong, or 0.
int writeAll(int descriptor, const QByteArray &bytes)
{
    for (qint64 written = 0; written < bytes.size();) {
        const ssize_t count =
            ::write(descriptor, bytes.constData() + written, static_cast<std::size_t>(bytes.size() - written));
        if (count < 0 && errno != EINTR) return errno;
        if (count > 0) written += count;
    }
    return 0;
}

}  // namespace

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
    const int problem = writeAll(STDOUT_FILENO, results);
    results.clear();
    if (problem == EPIPE) throw Failure{signalled + SIGPIPE, {}};
    if (problem != 0) throw Failure{fileFailed, QStringLiteral("standard output: ") + std::strerror(problem)};
}

void Console::error(const QString &reason)
{
    if (!reason.isEmpty()) writeAll(STDERR_FILENO, "kora-cli: " + printable(reason).toUtf8() + '\n');
}

void Console::progress(const QString &what, int done, int total)
{
    const int percent = 100 * done / total;
    if (quiet || percent == shownPercent || isatty(STDERR_FILENO) == 0) return;
    shownPercent = percent;
    writeAll(STDERR_FILENO, QStringLiteral("\r%1: %2 %").arg(what).arg(percent).toUtf8());
}

void Console::hideProgress()
{
    if (shownPercent >= 0) writeAll(STDERR_FILENO, "\r" + QByteArray(40, ' ') + "\r");
    shownPercent = -1;
}

bool Console::canAsk() { return isatty(STDIN_FILENO) != 0 && isatty(STDERR_FILENO) != 0; }

bool Console::confirms(const QString &question)
{
    writeAll(STDERR_FILENO, printable(question).toUtf8() + " [y/N] ");
    char answer[256];
    const ssize_t count = ::read(STDIN_FILENO, answer, sizeof answer);
    if (count <= 0) writeAll(STDERR_FILENO, "\n");
    interrupt::check();
    const QByteArray word = QByteArray(answer, static_cast<int>(std::max<ssize_t>(count, 0))).trimmed().toLower();
    return word == "y" || word == "yes";
}
