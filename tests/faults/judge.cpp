// SPDX-License-Identifier: MIT
// Exit codes, texts, files, descriptors, and what the reader keeps.
#include "tests/faults/judge.h"

#include "tests/faults/watched_calls.h"

#include <algorithm>
#include <csignal>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace zel::test {

namespace {

constexpr int kDocumented[] = {0, 1, 2, 64, 65, 66, 69, 73, 77, 130};
constexpr int kInterrupted = 130;

bool isDocumented(int exit) {
    return std::find(std::begin(kDocumented), std::end(kDocumented), exit) != std::end(kDocumented);
}

bool asksForJson(const Scene& scene) {
    return std::find(scene.words.begin(), scene.words.end(), "--json") != scene.words.end();
}

class Judge {
public:
    Judge(const Scene& scene, const CallFailure& failure, const SceneRun& run,
          const SceneRun& undisturbed)
        : scene_(scene), failure_(failure), run_(run), undisturbed_(undisturbed) {}

    std::string verdict() const {
        if (run_.exit < 0)
            return run_.exit == -SIGALRM ? "hangs"
                                         : "ended by signal " + std::to_string(-run_.exit);
        if (!isDocumented(run_.exit))
            return "exit code " + std::to_string(run_.exit);
        if (run_.account.leftOpen != 0)
            return std::to_string(run_.account.leftOpen) + " descriptors stay open";
        for (const std::string& fault : {ofText(), ofObject(), ofFiles(), ofSuccess()})
            if (!fault.empty())
                return fault;
        return "";
    }

private:
    bool failedAt(int descriptor) const {
        return run_.account.calls.failedAt.test(static_cast<std::size_t>(descriptor));
    }

    std::string ofText() const {
        if (scene_.isJudge && run_.out.find("\"fault\"") != std::string::npos)
            return "";
        const bool saysNothing = run_.exit != undisturbed_.exit && run_.exit != kInterrupted &&
                                 run_.err.find("zeltag: ") == std::string::npos;
        return saysNothing && !failedAt(STDERR_FILENO) ? "fails without a word" : "";
    }

    std::string ofObject() const {
        if (!asksForJson(scene_) || failedAt(STDOUT_FILENO))
            return "";
        const auto object = nlohmann::json::parse(run_.out, nullptr, false);
        if (!object.is_object())
            return "stdout is no object: " + run_.out;
        return run_.exit != 0 && !object.contains("error") && !scene_.isJudge
                   ? "an object without its error"
                   : "";
    }

    // Each file is as before or as it is to be.
    std::string ofFiles() const {
        static const Files before = [] {
            furnishFolder();
            return filesHere();
        }();
        for (const auto& [name, text] : before)
            if (!run_.files.contains(name))
                return name + " is gone";
        for (const auto& [name, text] : run_.files) {
            const bool isOld = before.contains(name) && before.at(name) == text;
            const bool isNew = undisturbed_.files.contains(name) &&
                               (undisturbed_.files.at(name) == text || scene_.isLog);
            if (!isOld && !isNew && !isRemoval(failure_.number))
                return name + " is neither old nor new";
        }
        return "";
    }

    std::string ofSuccess() const {
        if (run_.exit != 0 || undisturbed_.exit != 0)
            return "";
        if (failedAt(STDOUT_FILENO) && run_.out != undisturbed_.out)
            return "tells success and not its results";
        if (run_.files != undisturbed_.files && (!scene_.isLog || failsAtAFile()))
            return "tells success without the file";
        return run_.account.memory != undisturbed_.account.memory
                   ? "tells success and the reader holds something else"
                   : "";
    }

    bool failsAtAFile() const {
        const std::string name = nameOfCall(failure_.number);
        return run_.account.calls.failures > 0 && !failedAt(STDERR_FILENO) &&
               (name == "write" || name == "close" || name == "openat");
    }

    const Scene& scene_;
    const CallFailure& failure_;
    const SceneRun& run_;
    const SceneRun& undisturbed_;
};

} // namespace

std::string faultOf(const Scene& scene, const CallFailure& failure, const SceneRun& run,
                    const SceneRun& undisturbed) {
    return Judge(scene, failure, run, undisturbed).verdict();
}

} // namespace zel::test
