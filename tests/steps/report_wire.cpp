// SPDX-License-Identifier: MIT
// Reports on the simulated bus, told by its trace.
#include "sim/wire/usb_bus.h"
#include "tests/steps/wire.h"

#include <algorithm>
#include <sstream>

namespace zel::test::steps {

namespace {

constexpr int kSendTries = 6; // that the library gives each report

int sendsOf(char form) { return form == '=' ? 2 : form == '<' ? 0 : 1; }
int fetchesOf(char form) { return form == '?' || form == '<' ? 1 : 0; }

sim::Fault faultOf(const Point& point) {
    switch (point.fault) {
    case Fault::Fetch:
        return sim::Fault::NoAnswer;
    case Fault::Cut:
        return sim::Fault::ShortAnswer;
    case Fault::Ones:
        return point.trouble == Trouble::Noise ? sim::Fault::Garbage : sim::Fault::AllOnes;
    default:
        return sim::Fault::SendRefused;
    }
}

// The pairs of a traced report without their blanks, or the characters that they stand for.
std::string requestOf(const std::string& line, bool isText) {
    std::istringstream pairs(line.substr(1, line.find("  ") - 1));
    std::string request;
    for (std::string pair; pairs >> pair;)
        request += isText ? std::string(1, static_cast<char>(std::stoi(pair, nullptr, 16))) : pair;
    return request;
}

class ReportWire : public Wire {
public:
    ReportWire(std::size_t port, bool isText) : port_(port), isText_(isText) {}

    void spoil(const Steps& steps, const Point& point, int times) override {
        int sends = point.fault == Fault::Data ? 1 : 0;
        int fetches = 0;
        for (std::size_t n = 0; n < point.exchange; ++n) {
            sends += sendsOf(steps[n].form());
            fetches += fetchesOf(steps[n].form());
        }
        const sim::Fault fault = faultOf(point);
        const bool isSend = fault == sim::Fault::SendRefused;
        const int refusals = point.trouble == Trouble::OnceRefused ? 1 : kSendTries * times;
        sim::usbBus().fail(port_, fault, isSend ? refusals : times, isSend ? sends : fetches);
    }

    void heal() override { sim::usbBus().fail(port_, sim::Fault::None, 0); }

    std::vector<std::string> takeTraffic() override {
        std::istringstream trace(sim::usbBus().takeTrace());
        std::vector<std::string> traffic;
        int refusals = 0;
        bool isRefused = false;
        for (std::string line; std::getline(trace, line);) {
            if (line.starts_with('>')) {
                if (!isRefused || refusals == kSendTries) {
                    traffic.push_back(requestOf(line, isText_));
                    refusals = 0;
                }
                isRefused = false;
            } else if (line == "! not sent") {
                ++refusals;
                isRefused = true;
            } else if (line.starts_with('<') || line == "! no answer") {
                traffic.emplace_back("<");
            }
        }
        return traffic;
    }

    std::vector<std::string> transfers(const std::string& command) const override {
        std::vector<std::string> all = transfersUpTo(command, Fault::Send);
        if (command.back() == '=')
            all.emplace_back();
        if (command.back() == '?')
            all.emplace_back("<");
        return all;
    }

    std::vector<std::string> transfersUpTo(const std::string& command, Fault fault) const override {
        if (fault != Fault::Send)
            return transfers(command);
        return {command.back() == '<' ? "<" : command.substr(0, command.size() - 1)};
    }

    bool hasReports() const override { return true; }

private:
    std::size_t port_;
    bool isText_;
};

} // namespace

std::unique_ptr<Wire> reportWire(std::size_t port, bool isText) {
    return std::make_unique<ReportWire>(port, isText);
}

} // namespace zel::test::steps
