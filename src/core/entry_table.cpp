#include "core/entry_table.h"

namespace tarvokin {

namespace {

std::string keyOf(std::string_view form, std::string_view control, Act act) {
    std::string k;
    k.reserve(form.size() + control.size() + 3);
    k.append(form).push_back('.');
    k.append(control).push_back('#');
    k.push_back(static_cast<char>('0' + static_cast<int>(act)));
    return k;
}

}  // namespace

void HandlerTable::on(std::string_view form, std::string_view control, Act act, Handler h) {
    handlers_[keyOf(form, control, act)] = std::move(h);
}

void HandlerTable::onView(std::string_view form, std::string_view control, Act act, Handler h) {
    const std::string k = keyOf(form, control, act);
    handlers_[k] = std::move(h);
    views_[k] = true;
}

bool HandlerTable::isView(std::string_view form, std::string_view control, Act act) const {
    return views_.count(keyOf(form, control, act)) != 0;
}

const Handler* HandlerTable::find(std::string_view form, std::string_view control, Act act) const {
    auto it = handlers_.find(keyOf(form, control, act));
    if (it == handlers_.end()) it = handlers_.find(keyOf(form, "*", act));
    return it == handlers_.end() ? nullptr : &it->second;
}

std::vector<std::pair<std::string, Act>> HandlerTable::controls(std::string_view form) const {
    std::vector<std::pair<std::string, Act>> out;
    const std::string prefix = std::string(form) + ".";
    for (auto it = handlers_.lower_bound(prefix); it != handlers_.end() && it->first.starts_with(prefix); ++it) {
        const std::string& k = it->first;
        const size_t hash = k.rfind('#');
        out.emplace_back(k.substr(prefix.size(), hash - prefix.size()), static_cast<Act>(k[hash + 1] - '0'));
    }
    return out;
}

}  // namespace tarvokin
