// SPDX-License-Identifier: MIT
// The one loop of a simulator.
#include "sim/server/server.h"

#include <algorithm>

namespace zel::sim {

namespace {

constexpr int kDribbleTurn = 10; // ms from one byte to the next
constexpr int kLongestTurn = 60'000;

} // namespace

Server::End Server::serve() {
    for (;;)
        if (const auto end = serveOnce())
            return *end;
}

std::optional<Server::End> Server::serveOnce() {
    world_.advance();
    world_.pump();
    for (Face* const face : faces_)
        face->serve();
    std::vector<pollfd> ends = {{signals_.descriptor(), POLLIN, 0}, {lifeline_, POLLIN, 0}};
    if (listener_)
        ends.push_back({listener_->descriptor(), POLLIN, 0});
    for (const Client& client : clients_)
        ends.push_back(client.waitsFor());
    for (const Face* const face : faces_)
        face->addTo(ends);
    world_.addTo(ends);
    poll(ends.data(), static_cast<nfds_t>(ends.size()), patience());
    world_.advance();
    acceptClients();
    std::erase_if(clients_, [](Client& client) { return !client.serve(); });
    return endOf(ends);
}

// Milliseconds until something happens by itself; -1: nothing will.
int Server::patience() const {
    const auto event = world_.untilNextEvent();
    const int most = world_.dribbles() ? kDribbleTurn : kLongestTurn;
    if (!event)
        return world_.dribbles() ? kDribbleTurn : -1;
    return static_cast<int>(
        std::min<std::uint64_t>((*event + 999) / 1000, static_cast<std::uint64_t>(most)));
}

void Server::acceptClients() {
    while (listener_) {
        Descriptor client = listener_->accept();
        if (!client.isOpen())
            return;
        clients_.emplace_back(std::move(client), control_);
    }
}

// A negative descriptor is never ready.
std::optional<Server::End> Server::endOf(std::span<const pollfd> ready) {
    if (control_.takeStop())
        return End{End::Cause::Stopped};
    if (const auto signal = signals_.take())
        return End{End::Cause::Signal, *signal};
    if (lifeline_ >= 0 && ready[1].revents != 0)
        return End{End::Cause::LifelineCut};
    return {};
}

} // namespace zel::sim
