#pragma once

#include <QByteArray>
#include <QString>

// The field rules of the tax agency's fixed-width file: every record is 250
// characters in ISO-8859-1, alphanumeric fields upper case without accents
// (Ñ and Ç kept) and only a small set of punctuation, numeric fields
// right-justified with zeros, NIF fields right-justified with zeros.
namespace Aeat {

constexpr int kRecordLength = 250;

// Upper case, accented letters replaced by plain ones (Ñ, Ç kept), every
// character outside letters, digits, blank and . , - _ & ' \ : ; / ( )
// replaced by a blank, blanks around trimmed. Only ISO-8859-1 remains.
QString AlphanumericText(const QString &text);

// An alphanumeric field: AlphanumericText, left-justified, blank-padded and
// cut to `width`.
QString AlphanumericField(const QString &text, int width);

// A numeric field: `value` (never negative) right-justified and zero-padded.
// Returns the empty text when the value does not fit `width` digits.
QString NumericField(qint64 value, int width);

// The digits of `text` only, right-justified with zeros; when there are more
// than `width` digits the last `width` are kept (a telephone written with its
// country prefix keeps its national number).
QString DigitsField(const QString &text, int width);

// A NIF field: the identifier upper case without blanks, right-justified with
// zeros to `width`; an empty identifier gives blanks.
QString NifField(const QString &nif, int width = 9);

// "surname1 surname2 name": the parts that are not empty (and not the "-"
// the donor grid writes for a missing part) joined by one blank.
QString PersonName(const QString &surname1, const QString &surname2, const QString &name);

// A record under construction: 250 blanks into which fields are put at their
// 1-based positions. Putting a value whose length differs from the field's
// is a programming error and throws std::logic_error.
class Record
{
public:
    Record();
    void Put(int position, int length, const QString &value);
    void Put(int position, QChar value) { Put(position, 1, QString(value)); }
    const QString &Text() const { return m_text; }
    // The record's bytes in ISO-8859-1 followed by CR LF.
    QByteArray Encoded() const { return Encode(m_text); }
    static QByteArray Encode(const QString &recordText);

private:
    QString m_text;
};

} // namespace Aeat
