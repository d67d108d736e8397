// Form windows for whoever asks for the first one: until then the desktop's toolkit is not in the process.
#pragma once

#include <memory>

#include "Platform/Linux/Forms/FormBridge.h"
#include "Platform/Log.h"

namespace morvel::x11 {

/// Main thread only. Outlives its windows.
class FormService {
public:
    /// The log outlives it.
    explicit FormService(Log& log) : log_(log) {}

    /// Null, with a line in the log, when the module cannot be used.
    std::unique_ptr<ui::FormWindowPeer> makeWindow(ui::Form form, bool dark);
    void setDark(bool dark);

private:
    Log& log_;
    std::unique_ptr<FormBridge> bridge_;
};

}  // namespace morvel::x11
