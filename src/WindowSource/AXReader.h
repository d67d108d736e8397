// Reads attributes of other programs' elements as the types that they should have.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Platform/Accessibility.h"

namespace morvel {

/// Made for one piece of work on one process. Whatever cannot be read or has another type is nothing. After the first
/// answer that did not come in time nothing more is asked, so that a hung process costs one time-out, not one for each
/// attribute; `hasTimedOut` then says that nothing may be concluded from what is missing.
class AXReader {
public:
    /// `accessibility` outlives this.
    explicit AXReader(Accessibility& accessibility) : accessibility_(accessibility) {}

    std::optional<std::string> readString(const AXElement& element, std::string_view attribute);
    std::optional<bool> readBool(const AXElement& element, std::string_view attribute);
    std::optional<double> readNumber(const AXElement& element, std::string_view attribute);
    std::optional<Size> readSize(const AXElement& element, std::string_view attribute);
    std::optional<AXElement> readElement(const AXElement& element, std::string_view attribute);
    std::optional<std::vector<AXElement>> readElements(const AXElement& element, std::string_view attribute);
    /// Position and size together; nothing unless both can be read and are finite.
    std::optional<Rect<AXSpace>> readFrame(const AXElement& element);
    bool hasCloseButton(const AXElement& element);

    bool hasTimedOut() const { return timedOut_; }
    /// Whether an element that was asked is gone.
    bool hasMetDeadElement() const { return metDeadElement_; }
    /// Whether an answer was that this program may not ask.
    bool wasDenied() const { return wasDenied_; }

private:
    std::optional<AXValue> read(const AXElement& element, std::string_view attribute);
    template <class T>
    std::optional<T> readAs(const AXElement& element, std::string_view attribute);

    Accessibility& accessibility_;
    bool timedOut_ = false;
    bool metDeadElement_ = false;
    bool wasDenied_ = false;
};

}  // namespace morvel
