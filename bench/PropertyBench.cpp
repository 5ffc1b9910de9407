#include "Bench.h"
#include "TemporaryDirectory.h"

#include <QorWflPropertyFile.h>

#include <benchmark/benchmark.h>

#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstdio>
#include <glib.h>
#include <memory>

namespace {

const std::vector<int> kLineCounts{100, 10'000, 1'000'000};
constexpr const char* kGroup = "settings";

/** The path of a property file of so many settings, which the others can read too: its first line means nothing to us.
 */
std::string FilePath(int iLines) {
    static const TemporaryDirectory directory;
    const std::string name = std::to_string(iLines) + ".properties";
    const std::filesystem::path path = directory.Path() / name;
    if (!std::filesystem::exists(path)) {
        std::string text = std::string("[") + kGroup + "]\n";
        for (int i = 0; i < iLines; ++i) {
            char line[80];
            std::snprintf(line, sizeof line, "actionPriority.%08d = Priority of %08d\n", i, i);
            text += line;
        }
        directory.Write(name, text);
    }
    return path.string();
}

void AddSetting(std::string& ioSettings, const char* iKey, const char* iValue) {
    ioSettings.append(iKey).append("=").append(iValue).append("\n");
}

// ---------------------------------------------------------------------------------------------------- ours

void ReadOurs(const std::string& iPath, std::string* oSettings) {
    QorWflPropertyFile file;
    file.Read(iPath.c_str());
    benchmark::DoNotOptimize(file.GetNKeys());
    for (int i = 1; oSettings != nullptr && i <= file.GetNKeys(); ++i) {
        AddSetting(*oSettings, file.GetKey(i).ConvertToChar(), file.GetValue(i).ConvertToChar());
    }
}

// ---------------------------------------------------------------------------------------------------- GLib

struct FreeGlib {
    void operator()(GKeyFile* iFile) const { g_key_file_free(iFile); }
    void operator()(char* iText) const { g_free(iText); }
    void operator()(char** iTexts) const { g_strfreev(iTexts); }
};

void ReadWithGlib(const std::string& iPath, std::string* oSettings) {
    const std::unique_ptr<GKeyFile, FreeGlib> file(g_key_file_new());
    benchmark::DoNotOptimize(g_key_file_load_from_file(file.get(), iPath.c_str(), G_KEY_FILE_NONE, nullptr));
    if (oSettings == nullptr) {
        return;
    }
    const std::unique_ptr<char*, FreeGlib> keys(g_key_file_get_keys(file.get(), kGroup, nullptr, nullptr));
    for (char** key = keys.get(); key != nullptr && *key != nullptr; ++key) {
        const std::unique_ptr<char, FreeGlib> value(g_key_file_get_value(file.get(), kGroup, *key, nullptr));
        AddSetting(*oSettings, *key, value.get());
    }
}

// ---------------------------------------------------------------------------------------------------- Boost

void ReadWithBoost(const std::string& iPath, std::string* oSettings) {
    boost::property_tree::ptree tree;
    boost::property_tree::ini_parser::read_ini(iPath, tree);
    benchmark::DoNotOptimize(tree.size());
    if (oSettings == nullptr) {
        return;
    }
    for (const auto& [key, value] : tree.get_child(kGroup)) {
        AddSetting(*oSettings, key.c_str(), value.data().c_str());
    }
}

// ---------------------------------------------------------------------------------------------------- timing

using Reader = void (*)(const std::string&, std::string*);

Bench::Work Timed(Reader iRead) {
    return [iRead](benchmark::State& ioState, int iLines) {
        const std::string path = FilePath(iLines);
        for ([[maybe_unused]] auto round : ioState) {
            iRead(path, nullptr);
        }
    };
}

std::string SettingsRead(Reader iRead, const std::string& iPath) {
    std::string settings;
    iRead(iPath, &settings);
    return settings;
}

}  // namespace

void Bench::CheckProperties() {
    for (const int lines : kLineCounts) {
        const std::string path = FilePath(lines);
        const std::string ours = SettingsRead(ReadOurs, path);
        RequireSame("settings of GLib", ours, SettingsRead(ReadWithGlib, path));
        RequireSame("settings of Boost", ours, SettingsRead(ReadWithBoost, path));
    }
}

void Bench::AddProperties() {
    AddOurs("properties", kLineCounts, Timed(ReadOurs));
    Add("properties", "GKeyFile", kLineCounts, Timed(ReadWithGlib));
    Add("properties", "Boost.PropertyTree", kLineCounts, Timed(ReadWithBoost));
}
