#include "Bar/Layout/RunningWindowOrder.h"

#include <cstddef>

namespace morvel::RunningWindowOrder {

namespace {

constexpr size_t kNone = static_cast<size_t>(-1);

/// One of the current windows, as a node of two lists: the resulting order, and its process's windows that are new.
struct Node {
    WindowID id;
    size_t process = kNone;
    size_t next = kNone;       // in the resulting order
    size_t nextFresh = kNone;  // among the new windows of its process
    bool isKept = false;
    bool isPlaced = false;
};

struct Process {
    size_t firstFresh = kNone;
    size_t lastFresh = kNone;
    size_t lastPlaced = kNone;  // the process's last window in the resulting order so far
};

/// Inserting after a process's last window is a matter of links, so the whole costs no more than its look-ups.
class Ordering {
public:
    Ordering(const std::vector<WindowID>& old, const std::vector<WindowSnapshot>& current) : old_(old) {
        nodes_.reserve(current.size());
        indices_.reserve(current.size());
        for (const WindowSnapshot& window : current) {
            if (!indices_.try_emplace(window.id, nodes_.size()).second) continue;
            nodes_.push_back({window.id, processIndex(window.pid)});
        }
        oldNodes_.reserve(old.size());
        for (const WindowID& id : old) {
            const auto found = indices_.find(id);
            oldNodes_.push_back(found == indices_.end() ? kNone : found->second);
            if (oldNodes_.back() != kNone) nodes_[oldNodes_.back()].isKept = true;
        }
    }

    void collectFresh() {
        for (size_t i = 0; i < nodes_.size(); ++i) {
            if (nodes_[i].isKept) continue;
            Process& process = processes_[nodes_[i].process];
            (process.firstFresh == kNone ? process.firstFresh : nodes_[process.lastFresh].nextFresh) = i;
            process.lastFresh = i;
        }
    }

    void keepAndReplace(const std::unordered_map<WindowID, ProcessID>& oldPIDs) {
        for (size_t i = 0; i < old_.size(); ++i) {
            if (oldNodes_[i] == kNone) {
                if (const auto pid = oldPIDs.find(old_[i]); pid != oldPIDs.end()) placeHeir(pid->second);
            } else if (!nodes_[oldNodes_[i]].isPlaced) {
                append(oldNodes_[i]);
            }
        }
    }

    void insertRemaining() {
        for (size_t i = 0; i < nodes_.size(); ++i) {
            if (nodes_[i].isPlaced) continue;
            const size_t neighbour = processes_[nodes_[i].process].lastPlaced;
            if (neighbour == kNone) {
                append(i);
            } else {
                insertAfter(neighbour, i);
            }
        }
    }

    std::vector<WindowID> result() const {
        std::vector<WindowID> ids;
        ids.reserve(nodes_.size());
        for (size_t i = first_; i != kNone; i = nodes_[i].next) ids.push_back(nodes_[i].id);
        return ids;
    }

private:
    size_t processIndex(ProcessID pid) {
        const auto [entry, isNew] = processIndices_.try_emplace(pid, processes_.size());
        if (isNew) processes_.emplace_back();
        return entry->second;
    }

    /// The first new window of the process that has no place yet, if any, takes the next one.
    void placeHeir(ProcessID pid) {
        const auto process = processIndices_.find(pid);
        if (process == processIndices_.end()) return;
        size_t& heir = processes_[process->second].firstFresh;
        if (heir == kNone) return;
        append(heir);
        heir = nodes_[heir].nextFresh;
    }

    void append(size_t node) {
        (last_ == kNone ? first_ : nodes_[last_].next) = node;
        last_ = node;
        place(node);
    }

    void insertAfter(size_t neighbour, size_t node) {
        nodes_[node].next = nodes_[neighbour].next;
        nodes_[neighbour].next = node;
        if (last_ == neighbour) last_ = node;
        place(node);
    }

    void place(size_t node) {
        nodes_[node].isPlaced = true;
        processes_[nodes_[node].process].lastPlaced = node;
    }

    const std::vector<WindowID>& old_;
    std::vector<size_t> oldNodes_;  // the node of each id of `old_`, or none: the window is gone
    std::vector<Node> nodes_;
    std::vector<Process> processes_;
    std::unordered_map<WindowID, size_t> indices_;
    std::unordered_map<ProcessID, size_t> processIndices_;
    size_t first_ = kNone;
    size_t last_ = kNone;
};

}  // namespace

std::vector<WindowID> sync(const std::vector<WindowID>& old, const std::unordered_map<WindowID, ProcessID>& oldPIDs,
                           const std::vector<WindowSnapshot>& current) {
    Ordering ordering(old, current);
    ordering.collectFresh();
    ordering.keepAndReplace(oldPIDs);
    ordering.insertRemaining();
    return ordering.result();
}

}  // namespace morvel::RunningWindowOrder
