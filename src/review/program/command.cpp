#include "review/program/command.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "driver/settings.h"

namespace tarvex::review {
namespace {

[[noreturn]] void ThrowUnwritten() {
    throw Trouble(std::string("can't write the output: ") + std::strerror(errno));
}

Settings SettingsIn(const std::string& path) {
    const IniFile ini(path);
    if (!ini.IsRead()) {
        throw Trouble("can't read '" + path + "'");
    }
    return ReadSettings(ini);
}

}  // namespace

void PrintOut(const std::string& text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
        ThrowUnwritten();
    }
}

void Flush() {
    if (std::fflush(stdout) != 0) {
        ThrowUnwritten();
    }
}

void AddFormat(CLI::App& command, std::string& format, const std::vector<std::string>& formats) {
    command.add_option("--format", format)->check(CLI::IsMember(formats))->capture_default_str();
}

void AddSettings(CLI::App& command, std::string& settingsPath) {
    command.add_option(
        "--settings", settingsPath,
        "read catalogs as the [Import] section of this TARVEX.ini says; else all forms, not validated");
}

ReadingOptions ReadingBy(const std::string& settingsPath) {
    ReadingOptions reading;
    if (!settingsPath.empty()) {
        const Settings settings = SettingsIn(settingsPath);
        reading.areNewerRead = settings.importNewer;
        reading.isValidated = settings.importValidate;
    }
    return reading;
}

std::set<unsigned> ExclusionsBy(const std::string& settingsPath) {
    return settingsPath.empty() ? std::set<unsigned>() : SettingsIn(settingsPath).importLogExclusions;
}

}  // namespace tarvex::review
