// What is dragged over our windows, as AppKit's pasteboard has it.
#pragma once

#include "Platform/Mac/apple/AppKit/NSPasteboard.h"
#include "UI/Drag.h"

namespace morvel::mac {

/// Made anew for each call that brings a drag: its contents may change between two of them. Main thread only.
class MacDragPasteboard : public ui::DragPasteboard {
public:
    explicit MacDragPasteboard(NSPasteboard contents) : contents_(std::move(contents)) {}

    bool hasType(std::string_view type) const override;
    std::optional<std::string> string(std::string_view type) const override;
    std::vector<std::string> filePaths() const override;
    bool hasFileURLs() const override { return contents_.canReadFileURLs(); }

private:
    NSPasteboard contents_;
};

/// The types that a window must register for to be told of the drags that views may care for. AppKit tells nothing of
/// a drag that has none of them.
NSArray draggedTypes();

}  // namespace morvel::mac
