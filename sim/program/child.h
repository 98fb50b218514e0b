// SPDX-License-Identifier: MIT
// The program that runs with simulated devices.
#pragma once

#include "sim/scene/trouble.h"

#include <optional>
#include <string>
#include <sys/types.h>
#include <variant>
#include <vector>

namespace zel::sim {

class Child {
public:
    // Starts a program that PATH may have to find, with more variables than this process has.
    static std::variant<Child, Trouble> start(std::vector<std::string> arguments,
                                              const std::vector<std::string>& variables);

    // Its exit code once it ended, 128 and the signal's number where one ended it.
    std::optional<int> exitCode();

    void send(int signal) const;

private:
    explicit Child(pid_t process) : process_(process) {}

    pid_t process_;
};

} // namespace zel::sim
