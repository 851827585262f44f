#include "Arguments.h"

namespace vlib {

Arguments::Arguments(const std::vector<std::string>& words, const std::set<std::string>& switches,
                     const std::set<std::string>& options) {
    bool optionsEnded = false;
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (optionsEnded || word.size() < 3 || word.compare(0, 2, "--") != 0) {
            if (word == "--" && !optionsEnded) {
                optionsEnded = true;
                continue;
            }
            if (!optionsEnded && word.size() > 1 && word[0] == '-' && word != "-")
                throw UsageError("unknown option '" + word + "'");
            m_positional.push_back(word);
            continue;
        }
        std::string name = word.substr(2);
        std::string inlineValue;
        bool hasInlineValue = false;
        if (const auto eq = name.find('='); eq != std::string::npos) {
            inlineValue = name.substr(eq + 1);
            name.resize(eq);
            hasInlineValue = true;
        }
        if (switches.count(name)) {
            if (hasInlineValue)
                throw UsageError("option '--" + name + "' takes no value");
            m_switches.insert(name);
        } else if (options.count(name)) {
            if (hasInlineValue) {
                m_options[name].push_back(inlineValue);
            } else {
                if (i + 1 >= words.size())
                    throw UsageError("option '--" + name + "' needs a value");
                m_options[name].push_back(words[++i]);
            }
        } else {
            throw UsageError("unknown option '--" + name + "'");
        }
    }
}

void Arguments::requirePositional(size_t count, const char* names, bool orMore) const {
    const size_t given = m_positional.size();
    if (given < count || (!orMore && given > count))
        throw UsageError(std::string("expected ") + names);
}

bool Arguments::has(const std::string& name) const {
    return m_switches.count(name) != 0 || m_options.count(name) != 0;
}

std::string Arguments::value(const std::string& name, const std::string& fallback) const {
    const auto it = m_options.find(name);
    return it == m_options.end() || it->second.empty() ? fallback : it->second.back();
}

std::vector<std::string> Arguments::values(const std::string& name) const {
    const auto it = m_options.find(name);
    return it == m_options.end() ? std::vector<std::string>() : it->second;
}

}  // namespace vlib
