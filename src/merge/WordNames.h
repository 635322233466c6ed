#pragma once

#include <string>

// Element and attribute names of WordprocessingML with the prefix the
// document binds to its main namespace ("w" in everything Word writes).
class WordNames
{
public:
    explicit WordNames(std::string prefix = "w") : m_prefix(std::move(prefix)) {}

    // "w:" + local, or just local when the namespace is the default one.
    std::string operator()(const char *local) const
    {
        return m_prefix.empty() ? std::string(local) : m_prefix + ':' + local;
    }
    bool Is(const char *qualifiedName, const char *local) const { return (*this)(local) == qualifiedName; }

    static constexpr const char *kNamespace = "http://schemas.openxmlformats.org/wordprocessingml/2006/main";

private:
    std::string m_prefix;
};
