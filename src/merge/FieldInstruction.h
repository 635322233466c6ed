#pragma once

#include <QString>
#include <optional>

// A merge field's instruction as Word writes it, e.g.
//   MERGEFIELD Provincia \b " (" \f ")" \* MERGEFORMAT
// The name may be quoted; \b and \f give the text put before and after a
// value that is not empty; \* Upper, Lower, Caps and FirstCap change the
// value's case; every other switch (\* MERGEFORMAT among them) is ignored.
struct MergeFieldInstruction
{
    QString fieldName;
    QString textBefore; // \b
    QString textAfter;  // \f
    QString caseFormat; // \* Upper | Lower | Caps | FirstCap, "" for none

    // The text that replaces the field for this value.
    QString Render(const QString &value) const;
};

// The instruction's merge field, or nothing when it is another kind of
// field (PAGE, DATE, IF, ...) or names no field.
std::optional<MergeFieldInstruction> ParseMergeField(const QString &instruction);
