#include "FakeInterfaces.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <sys/socket.h>

#include <cerrno>

namespace {

/// One entry of the list with everything it points to.
struct Node {
    ifaddrs entry{};
    std::string name;
    sockaddr address{};
    if_data data{};
    Node* next = nullptr;
};

Node* makeNode(const kestrune::FakeInterfaces::Entry& source, Node* next) {
    auto* node = new Node;
    node->name = source.name;
    node->next = next;
    node->entry.ifa_next = next == nullptr ? nullptr : &next->entry;
    node->entry.ifa_name = node->name.data();
    node->entry.ifa_flags = source.flags;
    if (source.family) {
        node->address.sa_family = static_cast<sa_family_t>(*source.family);
        node->entry.ifa_addr = &node->address;
    }
    if (source.counters) {
        node->data.ifi_ibytes = source.counters->received;
        node->data.ifi_obytes = source.counters->sent;
        node->entry.ifa_data = &node->data;
    }
    return node;
}

Node* firstNode = nullptr;

}  // namespace

namespace kestrune {

FakeInterfaces& FakeInterfaces::state() {
    static FakeInterfaces state;
    return state;
}

void FakeInterfaces::reset() {
    state() = {};
}

}  // namespace kestrune

using kestrune::FakeInterfaces;

extern "C" {

int getifaddrs(ifaddrs** list) noexcept {
    FakeInterfaces& state = FakeInterfaces::state();
    if (state.fails) {
        errno = ENOMEM;
        return -1;
    }
    Node* first = nullptr;
    for (auto entry = state.entries.rbegin(); entry != state.entries.rend(); ++entry) {
        first = makeNode(*entry, first);
    }
    firstNode = first;
    *list = first == nullptr ? nullptr : &first->entry;
    state.lists += first == nullptr ? 0 : 1;
    return 0;
}

void freeifaddrs(ifaddrs* list) noexcept {
    if (list == nullptr || firstNode == nullptr || list != &firstNode->entry) {
        --FakeInterfaces::state().lists;
        return;
    }
    while (firstNode != nullptr) {
        Node* const next = firstNode->next;
        delete firstNode;
        firstNode = next;
    }
    --FakeInterfaces::state().lists;
}

}  // extern "C"
