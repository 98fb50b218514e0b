// SPDX-License-Identifier: MIT
// `zeltag list`: the readers that are there.
#include "cli/command/command.h"
#include "cli/device/connection.h"
#include "cli/device/diagnosis.h"
#include "cli/device/listing.h"

namespace zel::cli {

namespace {

class ListCommand : public Command {
public:
    CommandText text() const override {
        return {"list", "Look", "List the readers", "zeltag list --sim"};
    }

    Outcome run(const Options& options, Output& output) override {
        const Connection connection(options);
        if (connection.failure())
            return connection.failure();
        if (options.isUsb() && !options.sim)
            for (const std::string& warning : warningsAbout(systemReaders()))
                warn(warning);
        printListing(options, output);
        return {};
    }
};

} // namespace

std::unique_ptr<Command> command::list() { return std::make_unique<ListCommand>(); }

} // namespace zel::cli
