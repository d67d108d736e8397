// A media player on a session bus, as well-behaved or as hostile as a test wants it.
#pragma once

#include <gio/gio.h>

#include <map>
#include <string>
#include <vector>

#include "SessionBus.h"

namespace morvel::e2e {

/// Answers while the harness waits.
class FakePlayer {
public:
    enum class Manner { Answers, IsSilent };

    /// `name` is the last part of its name on the bus. Throws std::runtime_error when it cannot be there.
    FakePlayer(SessionBus& session, const std::string& name, Manner manner = Manner::Answers);
    ~FakePlayer();
    FakePlayer(const FakePlayer&) = delete;
    FakePlayer& operator=(const FakePlayer&) = delete;

    /// Takes over the floating value.
    void setRoot(const std::string& property, GVariant* value) { set(kRoot, property, value); }
    /// And announces it.
    void set(const std::string& property, GVariant* value) { set(kPlayer, property, value); }
    void play(const std::string& title, const std::string& artist, const std::string& artUrl = "");

    /// The names of the methods that were called, in order, without the questions for properties.
    const std::vector<std::string>& calls() const { return calls_; }

private:
    static constexpr const char* kRoot = "org.mpris.MediaPlayer2";
    static constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";

    void set(const std::string& interface, const std::string& property, GVariant* value);
    void offer(const char* interface);
    void called(const char* interface, const char* method, GDBusMethodInvocation* invocation);
    Variant properties(const std::string& interface) const;

    SessionBus& session_;  // outlives us
    const Manner manner_;
    BusConnection bus_;
    std::map<std::string, std::map<std::string, Variant>> properties_;
    std::vector<std::string> calls_;
};

}  // namespace morvel::e2e
