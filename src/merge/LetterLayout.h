#pragma once

#include "merge/WordNames.h"

#include <pugixml.hpp>
#include <vector>

// What a copy of the template's body needs to stand as one letter among
// others in the same document: it starts on a new page (all but the first),
// and the identifiers Word wants unique in a document do not repeat
// (bookmarks are kept only in the first letter, drawing ids are shifted per
// letter, paragraph ids are dropped: Word assigns them again).
class LetterLayout
{
public:
    explicit LetterLayout(WordNames names) : w(std::move(names)) {}

    // `blocks`: the letter's body elements; `index`: 0 for the first letter.
    void Prepare(const std::vector<pugi::xml_node> &blocks, int index) const;

    static constexpr int kDrawingIdStep = 10000;

private:
    void StartOnNewPage(pugi::xml_node first) const;
    void MakeIdentifiersUnique(pugi::xml_node node, int index) const;

    WordNames w;
};
