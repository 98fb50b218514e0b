// SPDX-License-Identifier: MIT
// The option that tells how long a command waits for a card.
#pragma once

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace zel::cli {

// --wait SECONDS, 0 to a day.
CLI::Option* addWaitOption(CLI::App& app, double& seconds, const char* description);

} // namespace zel::cli
