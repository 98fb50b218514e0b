// SPDX-License-Identifier: MIT
// A zelsim that runs beside the test and shows its devices to the kernel.
#pragma once

#include <string>
#include <sys/types.h>

namespace zel::test {

class Simulator {
public:
    // A scenario's text; none for the reader of `zeltag --sim`. Returns when as many nodes are
    // there.
    explicit Simulator(const std::string& scenario = "", int nodes = 1);
    ~Simulator();
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    // A request of its socket, and the answer, both an object in one line.
    std::string ask(const std::string& request);

    // Return when the kernel's node is gone, or there again.
    void unplug();
    void plug();

private:
    pid_t process_ = -1;
    int socket_ = -1;
};

// How many hidraw nodes there are, in sysfs and in /dev. Their numbers have gaps: that of a reader
// that left stays taken until the last program closes it.
int countNodes();

// Waits until there are so many; false after a minute.
bool waitForNodes(int count);

} // namespace zel::test
