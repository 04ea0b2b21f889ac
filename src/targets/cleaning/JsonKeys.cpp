// SPDX-License-Identifier: MIT
#include "targets/cleaning/JsonKeys.h"

#include <exception>
#include <nlohmann/json.hpp>
#include <string_view>

namespace dorvanel::cleaning {
namespace {

using Json = nlohmann::ordered_json;

/// Writing a text back recurses so deep.
constexpr int deepest = 200;

/// Looks through a text for what could not be written back as it is.
class Inspection final : public nlohmann::json_sax<Json> {
  public:
    [[nodiscard]] const std::string& reason() const { return reason_; }

    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t& digits) override {
        if (digits.find_first_of(".eE") != string_t::npos) return true;
        return refuse("has a number of too many digits");
    }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return descend(); }
    bool key(string_t&) override { return true; }
    bool end_object() override { return ascend(); }
    bool start_array(std::size_t) override { return descend(); }
    bool end_array() override { return ascend(); }
    bool parse_error(std::size_t, const std::string&,
                     const nlohmann::detail::exception& problem) override {
        return refuse(problem.what());
    }

  private:
    bool refuse(const std::string& reason) {
        reason_ = reason;
        return false;
    }
    bool descend() { return ++depth_ <= deepest || refuse("is nested too deep"); }
    bool ascend() {
        --depth_;
        return true;
    }

    int depth_ = 0;
    std::string reason_;
};

bool removeKey(Json& document, std::string_view path) {
    Json* object = &document;
    for (;;) {
        if (!object->is_object()) return false;
        const std::size_t dot = path.find('.');
        const std::string key(path.substr(0, dot));
        if (dot == std::string_view::npos) return object->erase(key) > 0;
        const auto found = object->find(key);
        if (found == object->end()) return false;
        object = &*found;
        path.remove_prefix(dot + 1);
    }
}

}  // namespace

Result<JsonRest> removeKeys(const std::string& text, const std::vector<JsonStep>& steps) {
    try {
        Inspection inspection;
        if (!Json::sax_parse(text, &inspection)) return Error{0, "parse", {}, inspection.reason()};
        Json document = Json::parse(text);
        JsonRest rest;
        for (const JsonStep& step : steps) {
            std::uint64_t& count = rest.counts.emplace_back(0);
            for (const std::string& path : step.remove) count += removeKey(document, path) ? 1 : 0;
        }
        rest.text = document.dump();
        return rest;
    } catch (const std::exception& problem) {
        return Error{0, "parse", {}, problem.what()};
    }
}

}  // namespace dorvanel::cleaning
