// SPDX-License-Identifier: MIT
// Another way than the socket by which a server shows its world.
#pragma once

#include <poll.h>
#include <vector>

namespace zel::sim {

class Face {
public:
    Face() = default;
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;
    virtual ~Face() = default;

    // Adds what it waits for.
    virtual void addTo(std::vector<pollfd>& ends) const = 0;

    // Serves what is ready, and follows what became of the world. Called each turn.
    virtual void serve() = 0;
};

} // namespace zel::sim
