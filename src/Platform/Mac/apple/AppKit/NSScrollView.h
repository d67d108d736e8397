// Scroll views and the clip views in them, whose bounds say what part of the document is to be seen.
#pragma once

#include "Platform/Mac/apple/AppKit/NSView.h"

namespace morvel::mac {

inline constexpr NSInteger NSScrollElasticityNone = 1;

extern "C" {
extern const objc::RawObject NSViewBoundsDidChangeNotification;
}

class NSClipView : public NSView {
public:
    static constexpr const char* kClass = "NSClipView";
    using NSView::NSView;

    void scrollTo(CGPoint origin) const { send(*this, "scrollToPoint:"_sel, origin); }
    void setPostsBoundsChanged(bool posts) const { send(*this, "setPostsBoundsChangedNotifications:"_sel, posts); }
};

class NSScrollView : public NSView {
public:
    static constexpr const char* kClass = "NSScrollView";
    using NSView::NSView;

    static NSScrollView make(CGRect frame) { return create<NSScrollView>("initWithFrame:"_sel, frame); }
    NSClipView contentView() const { return send<NSClipView>(*this, "contentView"_sel); }
    void setDocumentView(const NSView& view) const { send(*this, "setDocumentView:"_sel, view); }
    void setHasVerticalScroller(bool has) const { send(*this, "setHasVerticalScroller:"_sel, has); }
    void setAutohidesScrollers(bool hides) const { send(*this, "setAutohidesScrollers:"_sel, hides); }
    void setDrawsBackground(bool draws) const { send(*this, "setDrawsBackground:"_sel, draws); }
    void setVerticalScrollElasticity(NSInteger elasticity) const {
        send(*this, "setVerticalScrollElasticity:"_sel, elasticity);
    }
    /// The scrollers follow what the clip view shows now.
    void reflectScrolled(const NSClipView& clip) const { send(*this, "reflectScrolledClipView:"_sel, clip); }
};

}  // namespace morvel::mac
