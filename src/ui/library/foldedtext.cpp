#include "ui/library/foldedtext.h"

QString foldedText(const QString &text)
{
    QString folded;
    // Only capitals make two letters of one: SS.
    const QString decomposed = text.toUpper().toCaseFolded().normalized(QString::NormalizationForm_KD);
    folded.reserve(decomposed.size());
    for (const QChar letter : decomposed)
        if (!letter.isMark()) folded += letter;
    return folded;
}
