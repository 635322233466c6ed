#include "merge/LetterLayout.h"

#include <cstdlib>
#include <string>

void LetterLayout::Prepare(const std::vector<pugi::xml_node> &blocks, int index) const
{
    for (pugi::xml_node block : blocks)
        MakeIdentifiersUnique(block, index);
    if (index == 0)
        return;
    for (pugi::xml_node block : blocks) {
        if (block.type() == pugi::node_element) {
            StartOnNewPage(block);
            return;
        }
    }
}

void LetterLayout::StartOnNewPage(pugi::xml_node first) const
{
    if (!w.Is(first.name(), "p")) {
        // A letter that opens with a table gets a paragraph holding the break.
        pugi::xml_node paragraph = first.parent().insert_child_before(w("p").c_str(), first);
        pugi::xml_node br = paragraph.append_child(w("r").c_str()).append_child(w("br").c_str());
        br.append_attribute(w("type").c_str()) = "page";
        return;
    }
    // The paragraph property keeps the letter's first line at the top of the
    // page; it has its place after pStyle, keepNext and keepLines.
    pugi::xml_node pPr = first.child(w("pPr").c_str());
    if (!pPr)
        pPr = first.prepend_child(w("pPr").c_str());
    if (pugi::xml_node existing = pPr.child(w("pageBreakBefore").c_str())) {
        existing.remove_attribute(w("val").c_str());
        return;
    }
    pugi::xml_node after;
    for (pugi::xml_node child : pPr.children()) {
        if (w.Is(child.name(), "pStyle") || w.Is(child.name(), "keepNext") || w.Is(child.name(), "keepLines"))
            after = child;
        else
            break;
    }
    if (after)
        pPr.insert_child_after(w("pageBreakBefore").c_str(), after);
    else
        pPr.prepend_child(w("pageBreakBefore").c_str());
}

void LetterLayout::MakeIdentifiersUnique(pugi::xml_node node, int index) const
{
    std::vector<pugi::xml_node> bookmarks;
    for (pugi::xml_node child : node.children()) {
        if (child.type() != pugi::node_element)
            continue;
        if (index > 0 && (w.Is(child.name(), "bookmarkStart") || w.Is(child.name(), "bookmarkEnd"))) {
            bookmarks.push_back(child);
            continue;
        }
        MakeIdentifiersUnique(child, index);
    }
    for (pugi::xml_node bookmark : bookmarks)
        node.remove_child(bookmark);

    node.remove_attribute("w14:paraId");
    node.remove_attribute("w14:textId");
    if (index > 0 && std::string(node.name()) == "wp:docPr") {
        pugi::xml_attribute id = node.attribute("id");
        if (id)
            id.set_value(std::to_string(std::atol(id.value()) + long(index) * kDrawingIdStep).c_str());
    }
}
