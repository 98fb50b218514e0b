// SPDX-License-Identifier: MIT
// Shows a world to other processes: one thread, one poll(), no locks.
#pragma once

#include "sim/link/endpoint.h"
#include "sim/scene/world.h"
#include "sim/server/client.h"
#include "sim/server/face.h"
#include "sim/server/signals.h"

#include <list>

namespace zel::sim {

class Server {
public:
    // Why it stopped serving.
    struct End {
        enum class Cause { Stopped, Signal, LifelineCut } cause;
        int signal = 0;
    };

    Server(World& world, const Signals& signals)
        : world_(world), control_(world), signals_(signals) {}

    // Takes connections from now on.
    void listen(Listener& listener) { listener_ = &listener; }

    // Serves only as long as the other end of this pipe is open.
    void useLifeline(int descriptor) { lifeline_ = descriptor; }

    // Serves this way as well; the face outlives the server's work.
    void add(Face& face) { faces_.push_back(&face); }

    // Serves until something ends it; may be called again behind a signal.
    End serve();

private:
    std::optional<End> serveOnce();
    std::optional<End> endOf(std::span<const pollfd> ready);
    int patience() const;
    void acceptClients();

    World& world_;
    Control control_;
    const Signals& signals_;
    Listener* listener_ = nullptr;
    int lifeline_ = -1;
    std::list<Client> clients_;
    std::vector<Face*> faces_;
};

} // namespace zel::sim
