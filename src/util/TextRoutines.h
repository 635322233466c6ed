#pragma once

#include <QString>
#include <QVariant>

// Fits a text to a fixed width: the text is trimmed (a null value counts as
// the empty text); when it has at least `width` characters it is cut to its
// first `width`, otherwise `fill` is put in front of it (width - length) times.
// With fill "0" and width 9, "1234567Z" becomes "01234567Z". A width of zero
// or less gives the empty text.
QString FixedWidth(const QVariant &text, int width, const QString &fill);

// The text up to, not including, its first NUL character (the whole text when
// there is none); for buffers filled by system calls.
QString CutAtNul(const QString &text);

// Whether `text` holds `word` (ASCII letters), whatever the case of either:
// the quick test the statement translations make on every statement, much
// cheaper than a general case-insensitive search.
bool ContainsAsciiNoCase(QStringView text, QLatin1StringView word);
