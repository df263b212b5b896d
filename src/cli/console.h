#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

namespace cli {

constexpr int standardInput = 0;  ///< its descriptor

/// A standard stream that is closed must not become the unit's port or a file: it becomes one that ends, or fails.
void occupyStandardStreams();

/// What the program tells and asks. Results are kept until `flush`; nothing without a face (control characters, what
/// turns the direction of writing) reaches a terminal, wherever the text is from.
class Console
{
public:
    /// Whether results are JSON, and whether what is not asked for is left out.
    Console(bool isJsonWanted, bool isQuiet);

    bool isJson() const { return json; }
    /// A line of what was asked for.
    void show(const QString &line);
    /// A line on what was done.
    void report(const QString &line);
    /// The results as JSON, in place of all lines.
    void object(const QJsonObject &told);
    /// A file's content.
    void content(const QByteArray &bytes);
    /// Writes the results to standard output. Throws `Failure`.
    void flush();

    /// Why the command failed, on standard error.
    static void error(const QString &reason);
    /// What is going on, on standard error if that is a terminal; `hideProgress` takes it away.
    void progress(const QString &what, int done, int total);
    void hideProgress();

    /// Whether there is a terminal for `confirms`.
    static bool canAsk();
    /// Asks a question on the terminal; anything but a yes is a no. Throws `Failure` on a signal.
    bool confirms(const QString &question);

private:
    const bool json;
    const bool quiet;
    QByteArray results;
    int shownPercent = -1;  ///< while there is a progress line
};

/// A text with what has no face told by its number.
QString printable(const QString &text);

}  // namespace cli
