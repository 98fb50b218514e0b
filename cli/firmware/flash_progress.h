// SPDX-License-Identifier: MIT
// Tells how far a flash has come: a bar on a terminal, lines elsewhere.
#pragma once

#include <csignal>
#include <vector>

namespace zel::cli {

// The percentages that the library tells of so many lines, in order: 0, and each tenth that a
// number of whole lines hits.
std::vector<int> toldPercentages(int lines);

// Counts the library's signals of progress for as long as it lives, and shows what each stands for
// on stderr. Without its handler the first one would end the program. One at a time.
class FlashProgress {
public:
    FlashProgress(int lines, bool shown);
    ~FlashProgress();
    FlashProgress(const FlashProgress&) = delete;
    FlashProgress& operator=(const FlashProgress&) = delete;

private:
    struct sigaction before_ = {};
};

// Whether a bar stands on the terminal whose line is not ended yet.
bool hasOpenBar();

// Whether every line went out: what became of the last one isn't known yet.
bool isAllTold();

} // namespace zel::cli
