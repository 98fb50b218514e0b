// SPDX-License-Identifier: MIT
// Rows and objects of findings, and the exit code that they make.
#include "cli/doctor/finding.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zel::cli {

namespace {

const char* nameOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Ok:
        return "ok";
    case Verdict::Warning:
        return "warning";
    default:
        return "fault";
    }
}

Colour colourOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Ok:
        return Colour::Green;
    case Verdict::Warning:
        return Colour::Yellow;
    default:
        return Colour::Red;
    }
}

int rankOf(ExitCode exit) {
    return exit == ExitCode::NoPermission ? 2 : exit == ExitCode::NoDevice ? 1 : 0;
}

bool isFault(const Finding& finding) { return finding.verdict == Verdict::Fault; }

bool weighsLess(const Finding& a, const Finding& b) {
    const auto weight = [](const Finding& one) { return isFault(one) ? rankOf(one.exit) : -1; };
    return weight(a) < weight(b);
}

} // namespace

Finding ok(std::string check, std::string text) {
    return {Verdict::Ok, std::move(check), std::move(text)};
}

Finding warning(std::string check, std::string text, std::string fix) {
    return {Verdict::Warning, std::move(check), std::move(text), std::move(fix)};
}

Finding fault(std::string check, ExitCode exit, std::string text, std::string fix) {
    return {Verdict::Fault, std::move(check), std::move(text), std::move(fix), exit};
}

Finding fault(std::string check, const Failure& failure) {
    return fault(std::move(check), failure.exit, failure.message, failure.hint);
}

bool hasFault(const Findings& findings) {
    return std::any_of(findings.begin(), findings.end(), isFault);
}

Outcome outcomeOf(const Findings& findings) {
    if (!hasFault(findings))
        return {};
    const Finding& worst = *std::max_element(findings.begin(), findings.end(), weighsLess);
    const bool isCommon = worst.exit == ExitCode::NoPermission || worst.exit == ExitCode::NoDevice;
    return Failure{isCommon ? worst.exit : ExitCode::Failed, worst.text, worst.fix, ""};
}

void print(const Findings& findings, Output& output) {
    for (const Finding& finding : findings) {
        const std::string verdict = fmt::format("{:7}", nameOf(finding.verdict));
        output.line(fmt::format("{}  {:11} {}", output.coloured(verdict, colourOf(finding.verdict)),
                                finding.check, finding.text));
        if (!finding.fix.empty())
            output.line(fmt::format("{:9}{:11} -> {}", "", "", finding.fix));
    }
}

Json toJson(const Findings& findings) {
    Json all = Json::array();
    for (const Finding& finding : findings)
        all.push_back({{"check", finding.check},
                       {"verdict", nameOf(finding.verdict)},
                       {"text", finding.text},
                       {"fix", finding.fix.empty() ? Json() : Json(finding.fix)}});
    return all;
}

} // namespace zel::cli
