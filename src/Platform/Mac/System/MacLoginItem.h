// The application among the person's login items.
#pragma once

#include "Platform/Log.h"
#include "Platform/LoginItem.h"

namespace morvel::mac {

class MacLoginItem : public LoginItem {
public:
    /// The log outlives it.
    explicit MacLoginItem(Log& log) : log_(log) {}

    void setRegistered(bool isRegistered) override;

private:
    Log& log_;
};

}  // namespace morvel::mac
