// SPDX-License-Identifier: MIT
// The commands that speak with a simulator that runs.
#include "sim/link/endpoint.h"
#include "sim/program/arguments.h"
#include "sim/program/report.h"

#include <cerrno>
#include <cstring>
#include <functional>
#include <sys/socket.h>
#include <variant>

namespace zel::sim {

namespace {

Trouble noSimulator(const std::string& path, int error) {
    if (error == EACCES)
        return {Exit::NoPermission, path + ": " + std::strerror(error),
                "ask as the user who runs the simulator"};
    return {Exit::NoDevice, "no simulator listens at " + path,
            "start one with `zelsim run`, or name its socket with --socket"};
}

// The answer may be long: a state tells all settings.
std::string receiveLine(int descriptor) {
    std::string line;
    char piece[4096];
    while (line.find('\n') == std::string::npos) {
        const ssize_t count = recv(descriptor, piece, sizeof piece, 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        line.append(piece, static_cast<std::size_t>(count));
    }
    return line;
}

std::variant<Json, Trouble> ask(const Arguments& arguments) {
    const std::string path = arguments.socket.empty() ? socketPath() : arguments.socket;
    const Descriptor connection = connectTo(path, kControlGreeting);
    if (!connection.isOpen())
        return noSimulator(path, errno);
    sendAll(connection.number(), toLine(arguments.request) + '\n');
    const Json answer = Json::parse(receiveLine(connection.number()), nullptr, false);
    if (!answer.is_object())
        return Trouble{Exit::Failed, "the simulator at " + path + " didn't answer",
                       "start it anew with `zelsim run`"};
    return answer;
}

Trouble troubleIn(const Json& error) {
    return {static_cast<Exit>(error.value("exit", 1)), error.value("message", ""),
            error.value("hint", "")};
}

// Asks and prints what comes, as JSON or in the words of `tell`.
int askAndPrint(const Arguments& arguments,
                const std::function<std::string(const Json& answer)>& tell) {
    const auto result = ask(arguments);
    if (const auto* const trouble = std::get_if<Trouble>(&result))
        return fail(*trouble, arguments.json);
    const Json& answer = std::get<Json>(result);
    if (answer.contains("error"))
        return fail(troubleIn(answer.at("error")), arguments.json);
    const std::string text = arguments.json ? toLine(answer) : tell(answer);
    return text.empty() ? 0 : print(text, arguments.json);
}

std::string textOf(const Json& value) {
    if (value.is_boolean())
        return value.get<bool>() ? "on" : "off";
    return value.is_string() ? value.get<std::string>() : value.dump();
}

// "TimeParms.iIDHoldTO 1000", a line each.
void addSettings(std::string& text, const Json& settings, const std::string& head) {
    for (const auto& [name, value] : settings.items()) {
        if (value.is_object())
            addSettings(text, value, head + name + ".");
        else
            text.append("\n  ").append(head).append(name).append(" ").append(value.dump());
    }
}

std::string deviceText(const Json& device, bool showsSettings) {
    std::string text = textOf(device.at("name")) + ": " + textOf(device.at("kind")) + " at " +
                       textOf(device.at("at")) + (device.at("plugged") ? "" : ", unplugged");
    if (device.contains("card"))
        text += "\n  card " + textOf(device.at("card").at("id"));
    for (const char* const key : {"inches", "relay", "beeps", "exchanges", "violations"})
        if (device.contains(key))
            text += std::string("\n  ") + key + " " + textOf(device.at(key));
    if (device.contains("leds"))
        for (const auto& [led, colour] : device.at("leds").items())
            text += "\n  LED " + led + " " + textOf(colour);
    if (showsSettings)
        addSettings(text, device.at("settings"), "");
    return text;
}

std::string stateText(const Json& answer, bool showsSettings) {
    std::string text;
    for (const Json& device : answer.at("devices"))
        text += (text.empty() ? "" : "\n") + deviceText(device, showsSettings);
    return text;
}

std::string traceText(const Json& answer) {
    auto text = answer.at("trace").get<std::string>();
    if (!text.empty())
        text.pop_back(); // the end of the last line
    return text;
}

} // namespace

int controlCommand(const Arguments& arguments) {
    return askAndPrint(arguments, [](const Json&) { return std::string(); });
}

int stateCommand(const Arguments& arguments) {
    return askAndPrint(arguments, [&arguments](const Json& answer) {
        return stateText(answer, arguments.showsSettings);
    });
}

int traceCommand(const Arguments& arguments) { return askAndPrint(arguments, traceText); }

} // namespace zel::sim
