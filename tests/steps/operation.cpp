// SPDX-License-Identifier: MIT
// Short words for the rows.
#include "tests/steps/operation.h"

#include <utility>

namespace zel::test::steps {

Outcome ends(long long result, std::int64_t error, std::string seen, std::string then) {
    return {result, error, std::move(seen), std::move(then)};
}

Outcome passes(long long result, std::int64_t error, std::string seen) {
    return {result, error, std::move(seen), "*"};
}

Outcome lasting(Outcome outcome, std::string later) {
    outcome.later = std::move(later);
    return outcome;
}

Steps lostAlone(Steps steps) {
    for (Step& step : steps) {
        step.of(Fault::Cut).reset();
        step.of(Fault::Ones).reset();
    }
    return steps;
}

Step query(std::string command, Outcome notSent, Outcome notFetched, Outcome cut, Outcome ones) {
    Step step{std::move(command) + '?'};
    step.of(Fault::Send) = std::move(notSent);
    step.of(Fault::Fetch) = std::move(notFetched);
    step.of(Fault::Cut) = std::move(cut);
    step.of(Fault::Ones) = std::move(ones);
    return step;
}

Step query(std::string command, Outcome lost, Outcome cut, Outcome ones) {
    return query(std::move(command), lost, lost, std::move(cut), std::move(ones));
}

Step write(std::string command, Outcome lost, Outcome dataLost) {
    Step step{std::move(command) + '='};
    step.of(Fault::Send) = std::move(lost);
    step.of(Fault::Data) = std::move(dataLost);
    return step;
}

Step write(std::string command, Outcome lost) { return write(std::move(command), lost, lost); }

Step order(std::string command, Outcome lost) {
    Step step{std::move(command) + '!'};
    step.of(Fault::Send) = std::move(lost);
    return step;
}

Step frame(std::string command, Outcome notSent, Outcome notAnswered, int tries) {
    Step step =
        query(std::move(command), std::move(notSent), notAnswered, notAnswered, notAnswered);
    step.tries = tries;
    return step;
}

Step frame(std::string command, Outcome lost, int tries) {
    return frame(std::move(command), lost, lost, tries);
}

Step frameOrder(std::string command, Outcome notSent, Outcome notAnswered, Outcome good) {
    Step step = frame(std::move(command), std::move(notSent), std::move(notAnswered));
    step.of(Fault::Cut) = std::move(good);
    return step;
}

Step frameWrite(std::string command, Outcome notSent, Outcome notAnswered, Outcome good,
                int tries) {
    Step step = frame(std::move(command), std::move(notSent), tries);
    step.command.back() = '=';
    step.of(Fault::Data) = step.of(Fault::DataOnes) = std::move(notAnswered);
    step.of(Fault::DataCut) = std::move(good);
    return step;
}

} // namespace zel::test::steps
