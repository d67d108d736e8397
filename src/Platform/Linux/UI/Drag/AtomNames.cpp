#include "Platform/Linux/UI/Drag/AtomNames.h"

#include <utility>

namespace morvel::x11 {

namespace {

// Programs make up names without end; those of a few hundred drags are kept.
constexpr size_t kMaxKnown = 1024;

}  // namespace

void AtomNames::resolve(std::vector<xcb_atom_t> atoms, std::function<void(Names)> resolved) {
    if (known_->size() > kMaxKnown) known_->clear();
    std::vector<std::pair<xcb_atom_t, unsigned>> asked;
    for (const xcb_atom_t atom : atoms)
        if (!known_->contains(atom)) asked.emplace_back(atom, xcb_get_atom_name(connection_.get(), atom).sequence);

    auto finish = [known = known_, atoms = std::move(atoms), resolved = std::move(resolved)] {
        Names names;
        for (const xcb_atom_t atom : atoms)
            if (const auto found = known->find(atom); found != known->end()) names[found->second] = atom;
        resolved(std::move(names));
    };
    if (asked.empty()) return finish();
    for (size_t i = 0; i < asked.size(); ++i) {
        auto then = i + 1 == asked.size() ? std::function<void()>(finish) : nullptr;  // answers keep their order
        connection_.whenReplied<xcb_get_atom_name_reply_t>(
            asked[i].second,
            [known = known_, atom = asked[i].first, then = std::move(then)](const xcb_get_atom_name_reply_t* reply) {
                if (reply)
                    (*known)[atom].assign(xcb_get_atom_name_name(reply),
                                          static_cast<size_t>(xcb_get_atom_name_name_length(reply)));
                if (then) then();
            });
    }
}

}  // namespace morvel::x11
