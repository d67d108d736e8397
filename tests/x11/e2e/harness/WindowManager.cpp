#include "harness/WindowManager.h"

#include <fstream>
#include <stdexcept>

namespace morvel::e2e {
namespace {

constexpr const char* kConfiguration = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse><focusLast>yes</focusLast></focus>
  <placement><policy>Smart</policy><center>no</center><monitor>Primary</monitor></placement>
  <theme><name>Clearlooks</name><titleLayout>NLIMC</titleLayout><animateIconify>no</animateIconify></theme>
  <desktops><number>2</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <resize><popupShow>Never</popupShow></resize>
  <mouse>
    <dragThreshold>4</dragThreshold>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Titlebar">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Left" action="Drag"><action name="Move"/></mousebind>
    </context>
  </mouse>
</openbox_config>
)";

}  // namespace

WindowManager::WindowManager(XServer& server, Desktop& desktop) : server_(server), desktop_(desktop) {
    std::ofstream(server_.home() / "openbox.xml") << kConfiguration;
    start();
}

void WindowManager::start() {
    // Its properties stand before it has looked at the windows that are there, and a window that is mapped in between
    // can be lost to it. It runs the start-up command when it is through with that.
    const auto ready = server_.home() / "openbox.ready";
    std::filesystem::remove(ready);
    program_.emplace(std::vector<std::string>{"openbox", "--sm-disable", "--config-file",
                                              server_.home() / "openbox.xml", "--startup", "touch " + ready.string()},
                     server_.environment(), Program::Options{.output = server_.home() / "openbox.log"});
    if (!desktop_.waitUntil([&] { return std::filesystem::exists(ready); }))
        throw std::runtime_error("the window manager does not start");
}

void WindowManager::stop() {
    program_->terminate();
    program_.reset();
}

}  // namespace morvel::e2e
