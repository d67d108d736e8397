#include "WindowSource/AXReader.h"

#include <cmath>
#include <utility>

#include "Platform/AXNames.h"

namespace morvel {

std::optional<std::string> AXReader::readString(const AXElement& element, std::string_view attribute) {
    return readAs<std::string>(element, attribute);
}

std::optional<bool> AXReader::readBool(const AXElement& element, std::string_view attribute) {
    return readAs<bool>(element, attribute);
}

std::optional<double> AXReader::readNumber(const AXElement& element, std::string_view attribute) {
    return readAs<double>(element, attribute);
}

std::optional<Size> AXReader::readSize(const AXElement& element, std::string_view attribute) {
    const auto size = readAs<Size>(element, attribute);
    return size && std::isfinite(size->width) && std::isfinite(size->height) ? size : std::nullopt;
}

std::optional<AXElement> AXReader::readElement(const AXElement& element, std::string_view attribute) {
    return readAs<AXElement>(element, attribute);
}

std::optional<std::vector<AXElement>> AXReader::readElements(const AXElement& element, std::string_view attribute) {
    return readAs<std::vector<AXElement>>(element, attribute);
}

std::optional<Rect<AXSpace>> AXReader::readFrame(const AXElement& element) {
    const auto origin = readAs<Point<AXSpace>>(element, ax::kPosition);
    if (!origin || !std::isfinite(origin->x) || !std::isfinite(origin->y)) return std::nullopt;
    const auto size = readSize(element, ax::kSize);
    if (!size) return std::nullopt;
    return Rect<AXSpace>{origin->x, origin->y, size->width, size->height};
}

bool AXReader::hasCloseButton(const AXElement& element) {
    return read(element, ax::kCloseButton).has_value();
}

std::optional<AXValue> AXReader::read(const AXElement& element, std::string_view attribute) {
    if (timedOut_) return std::nullopt;
    AXAnswer answer = accessibility_.attribute(element, attribute);
    timedOut_ = answer.error == AXError::CannotComplete;
    if (answer.error == AXError::InvalidElement) metDeadElement_ = true;
    if (answer.error == AXError::ApiDisabled) wasDenied_ = true;
    return std::move(answer.value);
}

template <class T>
std::optional<T> AXReader::readAs(const AXElement& element, std::string_view attribute) {
    auto value = read(element, attribute);
    T* typed = value ? std::get_if<T>(&*value) : nullptr;
    return typed ? std::optional<T>(std::move(*typed)) : std::nullopt;
}

}  // namespace morvel
