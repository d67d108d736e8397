// A prompt as a titled window with a wrapping label and a push button.
#pragma once

#include "Platform/Mac/apple/AppKit/NSWindow.h"
#include "UI/Prompt.h"

namespace morvel::mac {

class MacPrompt : public ui::PromptPeer {
public:
    /// Shows it, centred, with the keyboard's focus, and makes the application the active one.
    explicit MacPrompt(ui::Prompt prompt);
    ~MacPrompt() override;

private:
    NSWindow window_;
};

}  // namespace morvel::mac
