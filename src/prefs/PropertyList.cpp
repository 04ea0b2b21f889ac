// SPDX-License-Identifier: MIT
#include "prefs/PropertyList.h"

#include <plist/plist.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <set>

#include "platform/PortableNumbers.h"
#include "prefs/BinaryPropertyList.h"

namespace dorvanel {

/// Owns the library's tree.
struct PropertyList::Node {
    explicit Node(plist_t root) : tree(root) {}
    ~Node() { plist_free(tree); }
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    [[nodiscard]] plist_t item(const std::string& key) const {
        return plist_dict_get_item(tree, key.c_str());
    }

    plist_t tree;
};

namespace {

bool isSpace(char c) {
    return std::isspace(static_cast<unsigned char>(c)) != 0;
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view withoutSpaceAtEnd(std::string_view text) {
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    return text;
}

std::string_view withoutSpaceAtStart(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    return text;
}

std::string stringOf(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string() : std::string(text, length);
}

std::int64_t integerOf(plist_t node) {
    std::uint64_t value = 0;
    plist_get_uint_val(node, &value);
    return static_cast<std::int64_t>(value);  // the library keeps negative numbers so
}

int clamped(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

int cutTowardZero(double value) {
    if (std::isnan(value)) return 0;
    return static_cast<int>(std::clamp<double>(value, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

/// The number that the text begins with, after white space; 0 when there is none.
int leadingInteger(std::string_view text) {
    text = withoutSpaceAtStart(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return 0;
    }
    int value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
    if (parsed.ec != std::errc::result_out_of_range) return value;
    return text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
}

/// "YES", "true" and numbers that are not zero; the first character that counts decides.
bool saysYes(std::string_view text) {
    text = withoutSpaceAtStart(text);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    while (text.starts_with('0')) text.remove_prefix(1);
    if (text.empty()) return false;
    return isDigit(text[0]) || std::string_view("YyTt").find(text[0]) != std::string_view::npos;
}

double realOf(plist_t node) {
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
}

bool boolOf(plist_t node) {
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

/// Whether the tree is nested no deeper than `levels`.
bool isNestedWithin(plist_t node, int levels) {
    if (levels == 0) return false;
    bool within = true;
    if (plist_get_node_type(node) == PLIST_ARRAY) {
        const std::uint32_t count = plist_array_get_size(node);
        for (std::uint32_t i = 0; within && i < count; ++i) {
            within = isNestedWithin(plist_array_get_item(node, i), levels - 1);
        }
    } else if (plist_get_node_type(node) == PLIST_DICT) {
        plist_dict_iter position = nullptr;
        plist_dict_new_iter(node, &position);
        plist_t item = nullptr;
        do {
            plist_dict_next_item(node, position, nullptr, &item);
            if (item != nullptr) within = isNestedWithin(item, levels - 1);
        } while (within && item != nullptr);
        std::free(position);
    }
    return within;
}

bool hasKeyTwice(plist_t dictionary) {
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(dictionary, &position);
    std::set<std::string> keys;
    char* key = nullptr;
    plist_dict_next_item(dictionary, position, &key, nullptr);
    bool isNew = true;
    while (isNew && key != nullptr) {
        isNew = keys.insert(key).second;
        std::free(key);
        key = nullptr;
        if (isNew) plist_dict_next_item(dictionary, position, &key, nullptr);
    }
    std::free(position);
    return !isNew;
}

/// Characters that a reader of XML would refuse or change.
bool isForbiddenInXml(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 && c != '\n' && c != '\t';
}

bool isBinary(std::string_view bytes) {
    return bytes.starts_with("bplist");
}

/// The tree of a list that is within our bounds; null when it is not one.
plist_t treeOf(std::string_view bytes) {
    // The library takes a list that breaks off between two elements for a whole one.
    const bool isWhole = isBinary(bytes)
                             ? binaryPropertyListIsWithin(bytes, PropertyList::maximumBytes,
                                                          PropertyList::maximumDepth)
                             : withoutSpaceAtEnd(bytes).ends_with("</plist>");
    plist_t tree = nullptr;
    if (isWhole) plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &tree);
    return tree;
}

plist_t nodeFor(const std::vector<std::string>& strings) {
    plist_t array = plist_new_array();
    for (const std::string& string : strings) {
        plist_array_append_item(array, plist_new_string(string.c_str()));
    }
    return array;
}

plist_t nodeFor(const PropertyList::Value& value) {
    if (const bool* flag = std::get_if<bool>(&value)) return plist_new_bool(*flag ? 1 : 0);
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return plist_new_uint(static_cast<std::uint64_t>(*number));
    }
    if (const auto* lists = std::get_if<PropertyList::StringLists>(&value)) {
        plist_t dictionary = plist_new_dict();
        for (const auto& [key, strings] : *lists) {
            plist_dict_set_item(dictionary, key.c_str(), nodeFor(strings));
        }
        return dictionary;
    }
    return nodeFor(std::get<std::vector<std::string>>(value));
}

/// The strings of an array; members of other kinds are left out.
std::vector<std::string> stringsOf(plist_t array) {
    std::vector<std::string> strings;
    const std::uint32_t count = plist_array_get_size(array);
    for (std::uint32_t i = 0; i < count; ++i) {
        plist_t member = plist_array_get_item(array, i);
        if (plist_get_node_type(member) == PLIST_STRING) strings.push_back(stringOf(member));
    }
    return strings;
}

/// Calls `work` with each key of a dictionary and its value.
void forEachMember(plist_t dictionary, const std::function<void(const char*, plist_t)>& work) {
    plist_dict_iter position = nullptr;
    plist_dict_new_iter(dictionary, &position);
    while (true) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(dictionary, position, &key, &item);
        if (key == nullptr) break;
        work(key, item);
        std::free(key);
    }
    std::free(position);
}

/// Whether a dictionary holds arrays of strings and nothing else, which can be written again.
bool isOfStringLists(plist_t dictionary) {
    bool isSo = true;
    forEachMember(dictionary, [&](const char*, plist_t item) {
        isSo = isSo && plist_get_node_type(item) == PLIST_ARRAY &&
               stringsOf(item).size() == plist_array_get_size(item);
    });
    return isSo;
}

}  // namespace

PropertyList::PropertyList() : root_(std::make_unique<Node>(plist_new_dict())) {}
PropertyList::PropertyList(std::unique_ptr<Node> root) : root_(std::move(root)) {}
PropertyList::PropertyList(PropertyList&&) noexcept = default;
PropertyList& PropertyList::operator=(PropertyList&&) noexcept = default;
PropertyList::~PropertyList() = default;

Result<PropertyList> PropertyList::parse(std::string_view bytes) {
    const platform::PortableNumbers portable;
    const auto refused = [](const char* reason) { return Error{0, "parse", {}, reason}; };
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(byteOrderMark)) bytes.remove_prefix(byteOrderMark.size());
    if (bytes.empty()) return refused("the file is empty");
    if (bytes.size() > maximumBytes) return refused("too large for a list of preferences");
    plist_t tree = treeOf(bytes);
    if (tree == nullptr) return refused("not a whole property list");
    auto root = std::make_unique<Node>(tree);
    if (plist_get_node_type(tree) != PLIST_DICT) return refused("not a dictionary");
    if (!isNestedWithin(tree, maximumDepth)) return refused("nested too deeply");
    const std::string written = PropertyList(std::move(root)).serialized();
    if (written.size() > maximumBytes) return refused("too large for a list of preferences");
    // As it will be read once it has been written.
    root = std::make_unique<Node>(treeOf(written));
    if (root->tree == nullptr || hasKeyTwice(root->tree)) {
        return refused("holds what cannot be written again");
    }
    return PropertyList(std::move(root));
}

std::string PropertyList::serialized() const {
    const platform::PortableNumbers portable;
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(root_->tree, &bytes, &length);
    std::string text(bytes == nullptr ? "" : bytes, length);
    plist_to_xml_free(bytes);
    if (std::none_of(text.begin(), text.end(), isForbiddenInXml)) return text;

    bytes = nullptr;
    length = 0;
    plist_to_bin(root_->tree, &bytes, &length);
    text.assign(bytes == nullptr ? "" : bytes, length);
    plist_to_bin_free(bytes);
    return text;
}

bool PropertyList::has(const std::string& key) const {
    return root_->item(key) != nullptr;
}

std::optional<PropertyList::Value> PropertyList::value(const std::string& key) const {
    plist_t node = root_->item(key);
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN:
            return boolOf(node);
        case PLIST_UINT:
            return integerOf(node);
        case PLIST_ARRAY: {
            std::vector<std::string> strings = asStrings(key).value();
            if (strings.size() != plist_array_get_size(node)) return std::nullopt;
            return strings;
        }
        case PLIST_DICT:
            if (!isOfStringLists(node)) return std::nullopt;
            return asStringLists(key).value();
        default:
            return std::nullopt;
    }
}

bool PropertyList::asBool(const std::string& key) const {
    plist_t node = root_->item(key);
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN:
            return boolOf(node);
        case PLIST_UINT:
            return integerOf(node) != 0;
        case PLIST_REAL:
            return realOf(node) != 0;
        case PLIST_STRING:
            return saysYes(stringOf(node));
        default:
            return false;
    }
}

int PropertyList::asInteger(const std::string& key) const {
    plist_t node = root_->item(key);
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN:
            return boolOf(node) ? 1 : 0;
        case PLIST_UINT:
            return clamped(integerOf(node));
        case PLIST_REAL:
            return cutTowardZero(realOf(node));
        case PLIST_STRING:
            return leadingInteger(stringOf(node));
        default:
            return 0;
    }
}

std::optional<std::string> PropertyList::asString(const std::string& key) const {
    plist_t node = root_->item(key);
    if (plist_get_node_type(node) != PLIST_STRING) return std::nullopt;
    return stringOf(node);
}

std::optional<std::vector<std::string>> PropertyList::asStrings(const std::string& key) const {
    plist_t node = root_->item(key);
    if (plist_get_node_type(node) != PLIST_ARRAY) return std::nullopt;
    return stringsOf(node);
}

std::optional<PropertyList::StringLists> PropertyList::asStringLists(const std::string& key) const {
    plist_t node = root_->item(key);
    if (plist_get_node_type(node) != PLIST_DICT) return std::nullopt;
    StringLists lists;
    forEachMember(node, [&](const char* name, plist_t item) {
        if (plist_get_node_type(item) == PLIST_ARRAY) lists[name] = stringsOf(item);
    });
    return lists;
}

void PropertyList::set(const std::string& key, const Value& value) {
    plist_dict_set_item(root_->tree, key.c_str(), nodeFor(value));
}

void PropertyList::remove(const std::string& key) {
    plist_dict_remove_item(root_->tree, key.c_str());
}

}  // namespace dorvanel
