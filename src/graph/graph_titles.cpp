#include "graph_data.h"

namespace quorvex::graph {

namespace {

constexpr const char* k_title_prefix = "Graph of: ";
constexpr const char* k_title_separator = " , ";

void set_title(std::string& title, bool& flag, const char* text, bool user_set) {
    if (!text) return;
    title = text;
    flag = user_set;
}

// A title the user chose, and did not leave empty, is kept unless the default is forced.
bool keeps_user_title(const std::string& title, bool user_set, bool force) {
    return user_set && !title.empty() && !force;
}

// Appends as much of `text` as the buffer still holds; false once it is full.
bool append_limited(std::string& buffer, const std::string& text) {
    const size_t limit = GraphData::k_title_buffer_size - 1;
    if (buffer.size() >= limit) return false;
    buffer.append(text, 0, limit - buffer.size());
    return buffer.size() < limit;
}

} // namespace

void GraphData::SetHeader(const char* text, bool user_set) {
    set_title(Header, HeaderSet, text, user_set);
}
void GraphData::SetFooter(const char* text, bool user_set) {
    set_title(Footer, FooterSet, text, user_set);
}
void GraphData::SetXAxisTitle(const char* text, bool user_set) {
    set_title(XAxisTitle, XTitleSet, text, user_set);
}
void GraphData::SetYAxisTitle(const char* text, bool user_set) {
    set_title(YAxisTitle, YTitleSet, text, user_set);
}
void GraphData::SetZAxisTitle(const char* text, bool user_set) {
    set_title(ZAxisTitle, ZTitleSet, text, user_set);
}

// Both the header and the footer defaults ask the footer's flag: a footer set by hand protects
// the header too, while a header set by hand alone does not protect itself. Documents rely on it.
void GraphData::SetDefaultHeader(bool force) {
    if (keeps_user_title(Header, FooterSet, force)) return;
    Header = k_title_prefix;
    AddDefaultTitleString(Header);
    HeaderSet = false;
}

void GraphData::SetDefaultFooter(bool force) {
    if (keeps_user_title(Footer, FooterSet, force)) return;
    Footer = k_title_prefix;
    AddDefaultTitleString(Footer);
    FooterSet = false;
}

void GraphData::SetDefaultXAxisTitle(bool force) {
    if (!XAxisVar || keeps_user_title(XAxisTitle, XTitleSet, force)) return;
    XAxisTitle = XAxisVar->name();
    XTitleSet = false;
}

void GraphData::SetDefaultYAxisTitle(bool force) {
    if (keeps_user_title(YAxisTitle, YTitleSet, force)) return;
    YAxisTitle.clear();
    AddDefaultTitleString(YAxisTitle);
    YTitleSet = false;
}

void GraphData::SetDefaultZAxisTitle(bool force) {
    if (!ZAxisVar || keeps_user_title(ZAxisTitle, ZTitleSet, force)) return;
    ZAxisTitle = ZAxisVar->name();
    ZTitleSet = false;
}

void GraphData::AddDefaultTitleString(std::string& buffer) const {
    bool first = true;
    auto add = [&](const std::string& text) {
        if (!first && !append_limited(buffer, k_title_separator)) return false;
        first = false;
        return append_limited(buffer, text);
    };
    for (const Function& function : Functions)
        if (!add(function.full_name())) return;
    for (const StrDataPnts& set : DataSets)
        if (!add(set.Name)) return;
}

void GraphData::ClearTitles() {
    Header = "Header";
    Footer = "Footer";
    XAxisTitle.clear();
    YAxisTitle.clear();
    ZAxisTitle.clear();
    XTitleSet = YTitleSet = ZTitleSet = FooterSet = HeaderSet = false;
}

} // namespace quorvex::graph
