#include "merge/FieldReplacer.h"

#include "merge/FieldInstruction.h"

#include <algorithm>

namespace {

QString Utf8(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

FieldReplacer::FieldReplacer(WordNames names, Lookup lookup) : w(std::move(names)), m_lookup(std::move(lookup))
{
}

int FieldReplacer::ReplaceIn(const std::vector<pugi::xml_node> &blocks)
{
    m_stack.clear();
    m_jobs.clear();
    m_simpleFields.clear();
    // The blocks are walked as one stream: a complex field may begin in one
    // paragraph and end in the next.
    for (pugi::xml_node block : blocks)
        Visit(block);

    // The tree changes only after the walk, so no node is lost under it.
    for (const Job &job : m_jobs)
        InsertValueRun(job.beginRun, job.modelRun, job.text);
    std::vector<pugi::xml_node> touchedRuns;
    for (const Job &job : m_jobs) {
        for (pugi::xml_node item : job.items) {
            pugi::xml_node run = item.parent();
            if (run.remove_child(item) && std::find(touchedRuns.begin(), touchedRuns.end(), run) == touchedRuns.end())
                touchedRuns.push_back(run);
        }
    }
    // A run left with nothing but its formatting is dropped.
    for (pugi::xml_node run : touchedRuns) {
        bool empty = true;
        for (pugi::xml_node child : run.children())
            if (child.type() == pugi::node_element && !w.Is(child.name(), "rPr"))
                empty = false;
        if (empty)
            run.parent().remove_child(run);
    }

    for (pugi::xml_node field : m_simpleFields) {
        const auto instruction = ParseMergeField(Utf8(field.attribute(w("instr").c_str()).value()));
        InsertValueRun(field, field.child(w("r").c_str()), instruction->Render(m_lookup(instruction->fieldName)));
        field.parent().remove_child(field);
    }
    return int(m_jobs.size() + m_simpleFields.size());
}

void FieldReplacer::Visit(pugi::xml_node node)
{
    for (pugi::xml_node child : node.children()) {
        if (child.type() != pugi::node_element)
            continue;
        if (w.Is(child.name(), "r")) {
            for (pugi::xml_node item : child.children())
                if (item.type() == pugi::node_element && !w.Is(item.name(), "rPr"))
                    VisitRunContent(item);
        } else if (w.Is(child.name(), "fldSimple")) {
            SimpleField(child);
        } else {
            Visit(child);
        }
    }
}

void FieldReplacer::VisitRunContent(pugi::xml_node item)
{
    if (w.Is(item.name(), "fldChar")) {
        FieldChar(item);
        return;
    }
    if (m_stack.empty())
        return;
    OpenField &field = m_stack.back();
    if (w.Is(item.name(), "instrText") && !field.inResult)
        field.instruction += Utf8(item.text().get());
    else if (field.inResult && !field.firstResultRun)
        field.firstResultRun = item.parent();
    field.items.push_back(item);
}

void FieldReplacer::FieldChar(pugi::xml_node fldChar)
{
    const std::string type = fldChar.attribute(w("fldCharType").c_str()).value();
    if (type == "begin") {
        OpenField field;
        field.begin = fldChar;
        field.insideInstruction = std::any_of(m_stack.begin(), m_stack.end(), [](const OpenField &outer) {
            return outer.insideInstruction || !outer.inResult;
        });
        field.items.push_back(fldChar);
        m_stack.push_back(field);
        return;
    }
    if (m_stack.empty())
        return; // a stray separate or end: nothing of ours to close
    OpenField &field = m_stack.back();
    field.items.push_back(fldChar);
    if (type == "separate") {
        field.inResult = true;
        return;
    }
    if (type != "end")
        return;
    OpenField done = std::move(field);
    m_stack.pop_back();
    const auto instruction = ParseMergeField(done.instruction);
    if (!instruction || done.insideInstruction)
        return;
    const pugi::xml_node beginRun = done.begin.parent();
    m_jobs.push_back({beginRun, done.firstResultRun ? done.firstResultRun : beginRun,
                      instruction->Render(m_lookup(instruction->fieldName)), std::move(done.items)});
}

void FieldReplacer::SimpleField(pugi::xml_node field)
{
    if (ParseMergeField(Utf8(field.attribute(w("instr").c_str()).value())))
        m_simpleFields.push_back(field);
    else
        Visit(field); // another kind of field: its result may hold merge fields
}

void FieldReplacer::InsertValueRun(pugi::xml_node before, pugi::xml_node model, const QString &text)
{
    if (text.isEmpty())
        return;
    pugi::xml_node run = before.parent().insert_child_before(w("r").c_str(), before);
    const pugi::xml_node format = model.child(w("rPr").c_str());
    if (format)
        run.append_copy(format);
    // A line break or tab in a value becomes Word's own; other control
    // characters cannot appear in XML at all.
    QString piece;
    const auto flush = [&] {
        if (piece.isEmpty())
            return;
        pugi::xml_node t = run.append_child(w("t").c_str());
        t.append_attribute("xml:space") = "preserve";
        t.text().set(piece.toUtf8().constData());
        piece.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            if (c == QLatin1Char('\r') && i + 1 < text.size() && text.at(i + 1) == QLatin1Char('\n'))
                ++i;
            flush();
            run.append_child(w("br").c_str());
        } else if (c == QLatin1Char('\t')) {
            flush();
            run.append_child(w("tab").c_str());
        } else if (c.unicode() >= 0x20) {
            piece += c;
        }
    }
    flush();
}
