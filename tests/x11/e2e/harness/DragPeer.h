// Another program at the other end of a drag: it drags exactly what and how it is told, or takes what is dropped on it.
#pragma once

#include <map>

#include "harness/Desktop.h"
#include "harness/XServer.h"

namespace morvel::e2e {

class DragPeer : public EventSource {
public:
    struct Message {
        std::string name;
        xcb_window_t window;
        std::array<uint32_t, 5> data;
    };

    /// With a box, its window can be seen and takes drops there, unmanaged.
    DragPeer(XServer& server, Desktop& desktop, const Box& box = {});
    ~DragPeer() override;

    xcb_window_t window() const { return window_; }
    Connection& connection() { return connection_; }

    // --- As a source ---
    /// From now on it owns what is dragged, and hands out these bytes under this type.
    void offer(const std::string& type, std::string bytes);
    /// From now on contents are handed out in pieces of at most this many bytes.
    void handOutInPieces(size_t bytes) { pieceSize_ = bytes; }
    /// Types beyond the third are told in the window's list.
    void enter(xcb_window_t target, const std::vector<std::string>& types, uint32_t version = 5);
    void moveTo(xcb_window_t target, Spot spot);
    void leave(xcb_window_t target) { send(target, "XdndLeave", {window_}); }
    void drop(xcb_window_t target) { send(target, "XdndDrop", {window_}); }
    void send(xcb_window_t target, std::string_view message, const std::array<uint32_t, 5>& data) {
        connection_.send(target, message, data);
    }
    /// From now on requests for the contents are not answered.
    void fallSilent() { isSilent_ = true; }
    void destroyWindow();

    // --- As a target ---
    void accept(const std::string& type) { accepted_ = type; }
    const std::optional<std::string>& received() const { return received_; }

    /// Messages of this name that it got.
    size_t count(std::string_view name) const;
    const Message* last(std::string_view name) const;
    bool wasAccepted(std::string_view name) const { return last(name) && (last(name)->data[1] & 1) != 0; }

    int descriptor() const override { return connection_.descriptor(); }
    void serve() override;

private:
    void answer(const xcb_client_message_event_t& event);
    void handOut(const xcb_selection_request_event_t& request);
    void handOutPiece(const xcb_property_notify_event_t& taken);
    void takeIn();

    Desktop& desktop_;  // outlives us
    Connection connection_;
    xcb_window_t window_;
    std::map<std::string, std::string> offers_;
    std::optional<size_t> pieceSize_;
    std::string remaining_;  // of what is being handed out in pieces
    xcb_selection_request_event_t request_{};
    std::string accepted_;
    xcb_window_t partner_ = XCB_NONE;  // the source of what is dragged over us
    std::optional<std::string> received_;
    std::vector<Message> messages_;
    bool isSilent_ = false;
};

}  // namespace morvel::e2e
