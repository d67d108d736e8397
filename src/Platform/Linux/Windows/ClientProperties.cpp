#include "Platform/Linux/Windows/ClientProperties.h"

#include <algorithm>

#include "Platform/Linux/System/HostName.h"
#include "Platform/Linux/System/Property.h"
#include "Platform/Linux/Windows/TextProperty.h"

namespace morvel::x11 {

namespace {

// Nobody reads further, and a program that sets a megabyte pays for it alone.
constexpr uint32_t kTitleLength = 1024;
constexpr uint32_t kListLength = 64;
constexpr double kWidestExtent = 4096;  // beyond any decoration or screen edge; protects sums from absurd values

std::string text(const Atoms& atoms, const xcb_get_property_reply_t* reply) {
    const auto raw = bytes(reply);
    if (!raw) return {};
    if (reply->type == XCB_ATOM_STRING) return latin1ToUtf8(*raw);
    if (reply->type == atoms.compoundText) return compoundTextToUtf8(*raw);
    return cleanUtf8(*raw);
}

bool contains(const std::vector<uint32_t>& atoms, xcb_atom_t atom) {
    return std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

Extents extents(const xcb_get_property_reply_t* reply) {
    const auto v = cardinals(reply);
    if (v.size() < 4) return {};
    const auto side = [&v](size_t i) { return std::min(double(v[i]), kWidestExtent); };
    return {side(0), side(1), side(2), side(3)};
}

std::optional<ClientType> knownType(const Atoms& atoms, xcb_atom_t type) {
    if (type == atoms.typeNormal) return ClientType::Normal;
    if (type == atoms.typeDialog) return ClientType::Dialog;
    if (type == atoms.typeUtility) return ClientType::Utility;
    if (type == atoms.typeDock) return ClientType::Dock;
    if (type == atoms.typeDesktop) return ClientType::Desktop;
    for (const xcb_atom_t other :
         {atoms.typeToolbar, atoms.typeMenu, atoms.typeSplash, atoms.typeDropdownMenu, atoms.typePopupMenu,
          atoms.typeTooltip, atoms.typeNotification, atoms.typeCombo, atoms.typeDnd})
        if (type == other) return ClientType::Other;
    return std::nullopt;
}

void readNetName(const Atoms& atoms, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.netName = isPresent(reply) ? std::optional(text(atoms, reply)) : std::nullopt;
}

void readLegacyName(const Atoms& atoms, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.legacyName = text(atoms, reply);
}

void readPid(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow&, ClientOwner& owner) {
    const auto pid = firstCardinal(reply);
    owner.told = pid ? std::optional(static_cast<int32_t>(*pid)) : std::nullopt;
}

void readMachine(const Atoms& atoms, const xcb_get_property_reply_t* reply, ClientWindow&, ClientOwner& owner) {
    const std::string machine = text(atoms, reply);
    owner.isLocal = machine.empty() || machine == "localhost" || machine == hostName();
}

void readClass(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    const auto names = splitAtNul(bytes(reply).value_or(std::string_view{}));
    client.classInstance = names.empty() ? std::string() : cleanUtf8(names[0]);
    client.className = names.size() < 2 ? std::string() : cleanUtf8(names[1]);
}

void readType(const Atoms& atoms, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.declaredType.reset();
    // A list in order of preference, of which the first known entry counts.
    for (const xcb_atom_t type : cardinals(reply))
        if (!client.declaredType) client.declaredType = knownType(atoms, type);
}

void readNetState(const Atoms& atoms, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    const auto states = cardinals(reply);
    client.skipsTaskbar = contains(states, atoms.stateSkipTaskbar);
    client.isFullscreen = contains(states, atoms.stateFullscreen);
    client.saysHidden = contains(states, atoms.stateHidden);
}

void readWmState(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    constexpr uint32_t kIconicState = 3;
    client.isIconic = firstCardinal(reply) == kIconicState;
}

void readDesktop(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.desktop = firstCardinal(reply);
}

void readDecorations(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.decorations = extents(reply);
}

void readShadow(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.shadow = extents(reply);
}

void readTransientFor(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.transientFor = firstCardinal(reply);
}

void readProtocols(const Atoms& atoms, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    client.takesDeleteRequests = contains(cardinals(reply), atoms.wmDeleteWindow);
}

void readStrut(const Atoms&, const xcb_get_property_reply_t* reply, ClientWindow& client, ClientOwner&) {
    const auto v = cardinals(reply);
    client.strut.reset();
    if (v.size() < 12) return;
    client.strut = Strut{double(v[0]), double(v[1]), double(v[2]), double(v[3]), double(v[4]),  double(v[5]),
                         double(v[6]), double(v[7]), double(v[8]), double(v[9]), double(v[10]), double(v[11])};
}

}  // namespace

std::vector<ClientProperty> clientProperties(const Atoms& atoms) {
    return {
        {atoms.netWmName, kTitleLength, readNetName},
        {XCB_ATOM_WM_NAME, kTitleLength, readLegacyName},
        {atoms.netWmPid, 1, readPid},
        {XCB_ATOM_WM_CLIENT_MACHINE, kListLength, readMachine},
        {XCB_ATOM_WM_CLASS, kListLength * 4, readClass},
        {atoms.netWmWindowType, kListLength, readType},
        {atoms.netWmState, kListLength, readNetState},
        {atoms.wmState, 2, readWmState},
        {atoms.netWmDesktop, 1, readDesktop},
        {atoms.netFrameExtents, 4, readDecorations},
        {atoms.gtkFrameExtents, 4, readShadow},
        {XCB_ATOM_WM_TRANSIENT_FOR, 1, readTransientFor},
        {atoms.wmProtocols, kListLength, readProtocols},
        {atoms.netWmStrutPartial, 12, readStrut},
    };
}

}  // namespace morvel::x11
