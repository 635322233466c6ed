#pragma once
// Shared set-up of the declaration generator's tests: a Modelo182.mdb of
// their own in a temporary folder, the wizard's rows, options with a fixed
// date and locale, and the file read back as records.

#include "DeclarationTables.h"
#include "data/Connection.h"
#include "generator/Modelo182Options.h"
#include "generator/Modelo182Result.h"
#include "generator/Modelo182Writer.h"

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.toStdString() << '"';
}

// An expected record written from the tax agency's table, independently of
// the generator: every field placed by position and length.
class ExpectedRecord
{
public:
    ExpectedRecord() : m_bytes(250, ' ') {}
    // Left-justified, blank-padded; `latin1` already in the file's encoding.
    ExpectedRecord &Text(int position, int length, const QByteArray &latin1)
    {
        Place(position, length, latin1.leftJustified(length, ' '));
        return *this;
    }
    // Right-justified, zero-padded.
    ExpectedRecord &Number(int position, int length, const QByteArray &digits)
    {
        Place(position, length, digits.rightJustified(length, '0'));
        return *this;
    }
    QByteArray Bytes() const { return m_bytes; }

private:
    void Place(int position, int length, const QByteArray &value)
    {
        EXPECT_EQ(value.size(), length) << "expected field at " << position << " does not fit";
        m_bytes.replace(position - 1, length, value.left(length));
    }
    QByteArray m_bytes;
};

// The 1-based position of the first byte where two records differ, 0 when
// they are equal.
inline int FirstDifference(const QByteArray &actual, const QByteArray &expected)
{
    for (int i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        if (i >= actual.size() || i >= expected.size() || actual.at(i) != expected.at(i))
            return i + 1;
    }
    return 0;
}

#define EXPECT_RECORD(actual, expected)                                                                                     \
    EXPECT_EQ(FirstDifference((actual), (expected)), 0) << "actual:   [" << (actual).toStdString() << "]\n"                 \
                                                        << "expected: [" << (expected).toStdString() << "]"

class GeneratorTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        db = CreateDeclarationFile(m_dir.filePath(QStringLiteral("Modelo182.mdb")));
        options.locale = QLocale(QLocale::Spanish, QLocale::Spain);
        options.reportsFolder = m_dir.filePath(QStringLiteral("Informes"));
        options.numeroJustificante = QStringLiteral("1821234567890");
        options.today = [] { return QDate(2025, 2, 10); };
    }

    QString Path(const QString &name) const { return m_dir.filePath(name); }
    QString FilePath(const QString &year = QStringLiteral("2024")) const
    {
        return Path(QStringLiteral("Informes/Modelo182_") + year + QStringLiteral(".txt"));
    }

    Modelo182Result Generate()
    {
        NoProgress progress;
        return EscribirModelo182(*db, options, progress);
    }

    // The records of a file; checks every one is 250 bytes followed by CR LF.
    static QList<QByteArray> Records(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QByteArray bytes = file.readAll();
        EXPECT_EQ(bytes.size() % 252, 0) << "file size " << bytes.size();
        QList<QByteArray> records;
        for (qsizetype at = 0; at + 252 <= bytes.size(); at += 252) {
            EXPECT_EQ(bytes.mid(at + 250, 2), QByteArray("\r\n")) << "record " << records.size() + 1;
            records << bytes.mid(at, 250);
        }
        return records;
    }

    static QByteArray ReadAll(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::shared_ptr<Connection> db;
    Modelo182Options options;

private:
    QTemporaryDir m_dir;
};
