#include "function_library.h"

namespace quorvex::engine {

FunctionLibrary::FunctionLibrary(std::string path) : m_file(std::move(path)) {}

const Function* FunctionLibrary::find(std::string_view name) {
    const std::string key(name);
    const auto known = m_found.find(key);
    if (known != m_found.end()) return known->second.get();

    std::unique_ptr<Function> function;
    for (const std::string& category : m_file.GetFunctionCatagories()) {
        m_file.SetFunctionFlagStr(category);
        if (!m_file.IsFunction(name)) continue;
        std::string full_name, value;
        if (!m_file.GetFuncFullName(name, full_name)) continue;
        m_file.GetFunctionValue(full_name, value);
        function = std::make_unique<Function>(full_name, value);
        function->SetFuncLabel(category);
        break;
    }
    return m_found.emplace(key, std::move(function)).first->second.get();
}

} // namespace quorvex::engine
