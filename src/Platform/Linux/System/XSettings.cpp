#include "Platform/Linux/System/XSettings.h"

#include <variant>

namespace morvel::x11 {

namespace {

enum class Type : uint8_t { Number = 0, Text = 1, Color = 2 };

/// Takes from the front; everything that is asked of it after its end is nothing.
class Reader {
public:
    explicit Reader(std::string_view data) : rest_(data) {}

    std::optional<std::string_view> take(size_t size) {
        if (rest_.size() < size) return std::nullopt;
        const std::string_view taken = rest_.substr(0, size);
        rest_.remove_prefix(size);
        return taken;
    }
    /// An unsigned number of this many bytes, in the order that the publisher chose.
    std::optional<uint32_t> number(size_t size) {
        const auto taken = take(size);
        if (!taken) return std::nullopt;
        uint32_t value = 0;
        for (size_t i = 0; i < size; ++i)
            value = value << 8 | static_cast<uint8_t>((*taken)[isBigEndian_ ? i : size - 1 - i]);
        return value;
    }
    /// What is filled up to a multiple of four bytes.
    std::optional<std::string_view> padded(size_t size) {
        const auto taken = take(size);
        return taken && take((4 - size % 4) % 4) ? taken : std::nullopt;
    }
    void setBigEndian(bool isBigEndian) { isBigEndian_ = isBigEndian; }

private:
    std::string_view rest_;
    bool isBigEndian_ = false;
};

using Value = std::variant<uint32_t, std::string_view>;

/// The number or text under the name.
std::optional<Value> find(std::string_view published, std::string_view wanted) {
    Reader reader(published);
    const auto order = reader.number(1);
    if (!order) return std::nullopt;
    reader.setBigEndian(*order == 1);
    reader.take(3 + 4);  // padding, serial number
    const auto count = reader.number(4);
    for (uint32_t i = 0; count && i < *count; ++i) {
        const auto type = reader.number(1);
        reader.take(1);
        const auto nameSize = reader.number(2);
        const auto name = nameSize ? reader.padded(*nameSize) : std::nullopt;
        if (!name || !reader.take(4)) return std::nullopt;  // the serial number of its last change
        switch (static_cast<Type>(*type)) {
            case Type::Number: {
                const auto value = reader.number(4);
                if (!value) return std::nullopt;
                if (*name == wanted) return *value;
                break;
            }
            case Type::Text: {
                const auto size = reader.number(4);
                const auto value = size ? reader.padded(*size) : std::nullopt;
                if (!value) return std::nullopt;
                if (*name == wanted) return *value;
                break;
            }
            case Type::Color:
                if (!reader.take(8)) return std::nullopt;
                break;
            default:
                return std::nullopt;  // its size is not known, so nor is where the next one starts
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<int32_t> xSettingsNumber(std::string_view published, std::string_view name) {
    const auto value = find(published, name);
    const auto* number = value ? std::get_if<uint32_t>(&*value) : nullptr;
    return number ? std::optional(static_cast<int32_t>(*number)) : std::nullopt;
}

std::optional<std::string> xSettingsText(std::string_view published, std::string_view name) {
    const auto value = find(published, name);
    const auto* text = value ? std::get_if<std::string_view>(&*value) : nullptr;
    return text ? std::optional<std::string>(*text) : std::nullopt;
}

}  // namespace morvel::x11
