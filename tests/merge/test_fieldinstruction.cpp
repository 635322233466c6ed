// Merge field instructions as Word writes them, and the Spanish date.
#include "test_merge.h"

#include "merge/Clock.h"
#include "merge/FieldInstruction.h"

namespace {

TEST(MergeFieldInstruction, ReadsTheNameAndTheSwitchesThatShapeTheText)
{
    struct Case
    {
        const char *instruction;
        const char *fieldName; // nullptr: not a merge field
        const char *value;
        const char *rendered;
    };
    const Case cases[] = {
        {" MERGEFIELD Nombre ", "Nombre", "Ana", "Ana"},
        {"MERGEFIELD  Nombre  \\* MERGEFORMAT ", "Nombre", "Ana", "Ana"},
        {" mergefield apellido1 \\* MERGEFORMAT", "apellido1", "Ruiz", "Ruiz"},
        {" MERGEFIELD \"Código postal\" ", "Código postal", "28001", "28001"},
        {" MERGEFIELD Provincia \\b \" (\" \\f \")\" ", "Provincia", "Madrid", " (Madrid)"},
        {" MERGEFIELD Provincia \\b \" (\" \\f \")\" ", "Provincia", "", ""},
        {" MERGEFIELD Nota \\b \"dice \\\"sí\\\": \" ", "Nota", "vale", "dice \"sí\": vale"},
        {" MERGEFIELD Nombre \\* Upper ", "Nombre", "José Ñúñez", "JOSÉ ÑÚÑEZ"},
        {" MERGEFIELD Nombre \\* Lower ", "Nombre", "JOSÉ ÑÚÑEZ", "josé ñúñez"},
        {" MERGEFIELD Nombre \\* Caps ", "Nombre", "JOSÉ ÁNGEL ÑÚÑEZ", "José Ángel Ñúñez"},
        {" MERGEFIELD Nombre \\* FirstCap ", "Nombre", "JOSÉ ÁNGEL", "José ángel"},
        {" MERGEFIELD Importe \\m \\v \\* CHARFORMAT ", "Importe", "61,00", "61,00"},
        {" PAGE ", nullptr, "", ""},
        {" IF { MERGEFIELD Nombre } = \"\" ", nullptr, "", ""},
        {" MERGEFIELD ", nullptr, "", ""},
        {" MERGEFIELD \\* MERGEFORMAT ", nullptr, "", ""},
        {"", nullptr, "", ""},
    };
    for (const Case &c : cases) {
        const auto field = ParseMergeField(QString::fromUtf8(c.instruction));
        ASSERT_EQ(field.has_value(), c.fieldName != nullptr) << c.instruction;
        if (!field)
            continue;
        EXPECT_EQ(field->fieldName, QString::fromUtf8(c.fieldName)) << c.instruction;
        EXPECT_EQ(field->Render(QString::fromUtf8(c.value)), QString::fromUtf8(c.rendered)) << c.instruction;
    }
}

TEST(SpanishLongDate, WritesDayMonthAndYearAsALetterDoes)
{
    const std::pair<QDate, const char *> cases[] = {
        {QDate(2026, 11, 23), "23 de noviembre de 2026"},
        {QDate(2027, 1, 1), "1 de enero de 2027"},
        {QDate(2025, 9, 30), "30 de septiembre de 2025"},
        {QDate(2024, 12, 31), "31 de diciembre de 2024"},
        {QDate(), ""},
    };
    for (const auto &[date, text] : cases)
        EXPECT_EQ(SpanishLongDate(date), QString::fromUtf8(text)) << text;
}

} // namespace
