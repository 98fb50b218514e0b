// SPDX-License-Identifier: MIT
#include "tests/steps/traffic.h"

#include "tests/steps/bench.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <sstream>

namespace zel::test::steps {

namespace {

const Wire& wire() { return *apparatus().wire; }

void appendCommands(Traffic& told, std::span<const Step> steps) {
    for (const Step& step : steps)
        told += wire().transfers(step.command);
}

void appendNamed(Traffic& told, const std::string& commands) {
    std::istringstream names(commands);
    for (std::string command; names >> command;)
        told += wire().transfers(command);
}

Traffic upTo(const Steps& steps, const Point& point, int tries) {
    Traffic told;
    appendCommands(told, std::span(steps).first(point.exchange));
    for (int attempt = 0; attempt < tries; ++attempt)
        told += wire().transfersUpTo(steps[point.exchange].command, point.fault);
    return told;
}

} // namespace

std::string shown(const Traffic& traffic) {
    std::string text;
    for (const std::string& transfer : traffic)
        text += transfer + '\n';
    return text;
}

bool isAsTold(const Traffic& traffic, const Traffic& told) {
    return std::equal(traffic.begin(), traffic.end(), told.begin(), told.end(),
                      [](const auto& one, const auto& start) { return one.starts_with(start); });
}

Traffic trafficOf(const Steps& steps) {
    Traffic told;
    appendCommands(told, steps);
    return told;
}

Traffic trafficOf(const Steps& steps, const Point& point) {
    Traffic told = upTo(steps, point, 1);
    appendCommands(told, std::span(steps).subspan(point.exchange));
    return told;
}

Traffic trafficOf(const Steps& steps, const Point& point, int tries, const std::string& then) {
    Traffic told = upTo(steps, point, tries);
    if (then == "*")
        appendCommands(told, std::span(steps).subspan(point.exchange + 1));
    else
        appendNamed(told, then);
    return told;
}

} // namespace zel::test::steps
