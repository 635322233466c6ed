#pragma once

#include "merge/WordNames.h"

#include <QString>
#include <functional>
#include <pugixml.hpp>
#include <vector>

// Replaces the merge fields of a part of a document by their values: simple
// fields (w:fldSimple) and complex ones (w:fldChar begin / w:instrText /
// separate / result / end), whose instruction and result may be split over
// any number of runs. Each field becomes one run carrying the formatting of
// its first result run (of its first run when it has no result) and the
// value's text; an empty value leaves nothing. Fields other than MERGEFIELD
// stay as they are, and so does a merge field inside another field's
// instruction (an IF), which this merge does not evaluate.
class FieldReplacer
{
public:
    // The value of a field by its name as written in the instruction.
    using Lookup = std::function<QString(const QString &fieldName)>;

    FieldReplacer(WordNames names, Lookup lookup);

    // Replaces every merge field within `blocks` (consecutive body
    // elements, walked in order); returns how many.
    int ReplaceIn(const std::vector<pugi::xml_node> &blocks);

private:
    // A complex field met while walking the runs, until its end.
    struct OpenField
    {
        pugi::xml_node begin; // the w:fldChar begin
        QString instruction;
        bool inResult = false;             // after its w:fldChar separate
        bool insideInstruction = false;    // nested in another field's instruction
        std::vector<pugi::xml_node> items; // run content of the field, to remove
        pugi::xml_node firstResultRun;
    };
    struct Job
    {
        pugi::xml_node beginRun;
        pugi::xml_node modelRun;
        QString text;
        std::vector<pugi::xml_node> items;
    };

    void Visit(pugi::xml_node node);
    void VisitRunContent(pugi::xml_node item);
    void FieldChar(pugi::xml_node fldChar);
    void SimpleField(pugi::xml_node field);
    // A run with the formatting of `model` (a w:r, may be null) holding `text`.
    void InsertValueRun(pugi::xml_node before, pugi::xml_node model, const QString &text);

    WordNames w;
    Lookup m_lookup;
    std::vector<OpenField> m_stack;
    std::vector<Job> m_jobs;
    std::vector<pugi::xml_node> m_simpleFields;
};
