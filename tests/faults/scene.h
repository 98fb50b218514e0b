// SPDX-License-Identifier: MIT
// A command of the command line, with the files and the reader that it finds.
#pragma once

#include "tests/faults/machine.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace zel::test {

struct Scene {
    using Place = Machine::Place;

    std::string name;               // of a test
    std::vector<std::string> words; // of the command line; "@" is the bridge's host
    Place place = Place::Usb;
    bool isFlash = false; // with a reader that takes the firmware
    bool isLog = false;   // what its file holds depends on what fails
    bool isJudge = false; // tells on stdout what it objects to
};

const std::vector<Scene>& scenes();

inline void PrintTo(const Scene& scene, std::ostream* stream) { *stream << scene.name; }

// Makes this folder the only one with files of a scene: its commands read and replace them.
void furnishFolder();

std::shared_ptr<sim::TagReader> readerOf(const Scene& scene);

} // namespace zel::test
