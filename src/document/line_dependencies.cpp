#include "line_dependencies.h"

#include "engine/function.h"
#include "engine/parser.h"

#include <cstring>
#include <unordered_map>

namespace quorvex::document {

namespace {

// The bytes of a value: exact, and cheaper than writing it out as text.
template <typename T>
void append_bytes(std::string& out, const T& value) {
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    out.append(bytes, sizeof(T));
}

void append_complex(std::string& out, const engine::complex& value) {
    append_bytes(out, value.real());
    append_bytes(out, value.imag());
}

} // namespace

std::string name_state(engine::Parser& parser, const std::string& key) {
    std::string state;
    if (engine::NameUse::is_function_key(key)) {
        const std::string short_name = engine::NameUse::display_name(key);
        const int index = parser.find_function(short_name.c_str());
        if (const engine::Function* function = index >= 0 ? parser.function_at(index) : nullptr)
            state = "f:" + function->full_name() + "=" + function->value();
        return state;
    }
    if (const engine::Variable* variable = parser.find_var(key.c_str())) {
        state = variable->assigned() ? "v:" : "u:";
        append_complex(state, variable->value());
        if (variable->incremented()) {
            append_complex(state, variable->low());
            append_complex(state, variable->high());
            append_bytes(state, variable->num_points());
        }
        return state;
    }
    if (parser.is_constant(key.c_str())) {
        state = "c:";
        append_bytes(state, static_cast<double>(parser.get_constant_value(key.c_str())));
    }
    return state;
}

LineRecord make_record(engine::Parser& parser, const engine::NameUse& use, std::string text) {
    LineRecord record;
    for (const std::string& name : use.read) record.read.emplace(name, name_state(parser, name));
    record.written.insert(use.written.begin(), use.written.end());
    record.text = std::move(text);
    return record;
}

std::set<std::string> changed_reads(engine::Parser& parser, const LineRecord& record) {
    std::set<std::string> changed;
    for (const auto& [name, seen] : record.read)
        if (name_state(parser, name) != seen) changed.insert(name);
    return changed;
}

std::vector<Staleness> find_stale(engine::Parser& parser, const std::vector<const LineRecord*>& lines) {
    std::vector<Staleness> result(lines.size());
    std::unordered_map<std::string, std::string> states;
    const auto state_of = [&](const std::string& name) -> const std::string& {
        auto found = states.find(name);
        if (found == states.end()) found = states.emplace(name, name_state(parser, name)).first;
        return found->second;
    };
    // Names a stale line above writes, with the changes that will reach them.
    std::unordered_map<std::string, std::set<std::string>> pending;
    for (size_t i = 0; i < lines.size(); ++i) {
        const LineRecord* record = lines[i];
        if (!record) continue;
        Staleness& line = result[i];
        for (const auto& [name, seen] : record->read) {
            if (state_of(name) != seen) line.changed.insert(name);
            if (const auto through = pending.find(name); through != pending.end())
                line.changed.insert(through->second.begin(), through->second.end());
        }
        line.stale = !line.changed.empty();
        if (line.stale)
            for (const std::string& name : record->written) pending[name].insert(line.changed.begin(), line.changed.end());
    }
    return result;
}

std::string changed_names_text(const std::set<std::string>& changed) {
    std::string text;
    size_t i = 0;
    for (const std::string& key : changed) {
        if (i > 0) text += i + 1 == changed.size() ? " and " : ", ";
        text += engine::NameUse::display_name(key);
        ++i;
    }
    return text;
}

} // namespace quorvex::document
