#pragma once

#include <QString>

/// A text as it is found, whatever its case and its accents: decomposed, without marks, case folded.
QString foldedText(const QString &text);
