// SPDX-License-Identifier: MIT
// The configurations of the active device: whether they were read, which one is meant, and the way
// back to the reader.
#pragma once

#include "cli/command/failure.h"
#include "cli/command/options.h"

#include <optional>

namespace CLI {
class App;
}

namespace zel::cli {

// Whether all configurations of the active device are in the library.
bool isConfigurationRead();

void addConfigurationOption(CLI::App& app, std::optional<int>& configuration);

// Lets the library's calls mean one configuration for as long as this object lives; the reader's
// own choice stays what it is.
class ChosenConfiguration {
public:
    explicit ChosenConfiguration(std::optional<int> configuration);
    ~ChosenConfiguration();
    ChosenConfiguration(const ChosenConfiguration&) = delete;
    ChosenConfiguration& operator=(const ChosenConfiguration&) = delete;

    const Outcome& failure() const { return failure_; }

private:
    int before_;
    Outcome failure_;
};

// Writes what is marked and reads everything back.
Outcome writeAndReadBack();
Outcome readBack();

} // namespace zel::cli
