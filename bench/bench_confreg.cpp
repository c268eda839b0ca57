// What users wait for: a text of the language table, a gas list, adding and deleting a gas.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "core/confreg.h"
#include "core/gas_database.h"
#include "core/idiomas.h"

namespace {

using namespace tavo;
namespace fs = std::filesystem;

const fs::path LANGUAGE_FILE = fs::path(TAVO_SOURCE_DIR) / "data" / "idioma.lng";

std::string gas_database(int count) {
    std::string bytes = "[General]\r\nn=" + std::to_string(count) + "\r\n";
    for (int g = 1; g <= count; ++g) {
        bytes += "[G" + std::to_string(g) + "]\r\nnombre=Gas " + std::to_string(g) + "\r\n";
        for (const char* key : {"pm", "tc", "pc", "vc", "teb", "hv"})
            bytes += std::string(key) + "=123.456\r\n";
        constexpr int coefficients[]{2, 2, 2, 2, 4, 3, 3, 3, 2};
        for (int e = 1; e <= 9; ++e) {
            for (int k = 1; k <= coefficients[e - 1]; ++k)
                bytes += "c(" + std::to_string(e) + "," + std::to_string(k) + ")=-1\r\n";
        }
    }
    return bytes;
}

/// A database file in a folder of its own.
class Database {
public:
    explicit Database(int count) : folder_(fs::temp_directory_path() / "bench_confreg") {
        fs::create_directories(folder_);
        restore(gas_database(count));
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { fs::remove_all(folder_); }

    void restore(const std::string& bytes) const { std::ofstream(file(), std::ios::binary) << bytes; }
    fs::path file() const { return folder_ / "data"; }
    confreg::Site site() const { return {.program_folder = folder_}; }

private:
    fs::path folder_;
};

void delete_gas(confreg::Text& text, int gas, int count) {
    text.borrarseccion("G" + std::to_string(gas));
    for (int i = gas + 1; i <= count; ++i)
        text.reemplazarlinea("[G" + std::to_string(i) + "]", "[G" + std::to_string(i - 1) + "]");
    text.escribirclave("General", "n", std::to_string(count - 1));
}

/// The last key of the last language, reading the file anew.
void LeerclaveOfTheLanguageFile(benchmark::State& state) {
    const confreg::Text table = confreg::read(LANGUAGE_FILE);
    const std::string language = idiomas::languages(table).back();
    const std::string key = table.claves(language).back().first;
    for (auto _ : state)
        benchmark::DoNotOptimize(confreg::leerclave(LANGUAGE_FILE, language, key));
}
BENCHMARK(LeerclaveOfTheLanguageFile);

/// The same from a table that is watched for changes.
void LeerclaveOfTheWatchedLanguageFile(benchmark::State& state) {
    confreg::Watched table(LANGUAGE_FILE);
    const std::string language = idiomas::languages(table.text()).back();
    const std::string key = table.text().claves(language).back().first;
    for (auto _ : state)
        benchmark::DoNotOptimize(table.text().leerclave(language, key));
}
BENCHMARK(LeerclaveOfTheWatchedLanguageFile);

void LeerclaveOfTheLastGas(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const confreg::Text text(gas_database(count));
    const std::string section = "g" + std::to_string(count);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.leerclave(section, "c(9,2)"));
}
BENCHMARK(LeerclaveOfTheLastGas)->Arg(60)->Arg(1000)->Arg(10000);

/// Reading the file and taking all names from it.
void GasList(benchmark::State& state) {
    const Database database(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const confreg::Text text = confreg::read(database.file());
        benchmark::DoNotOptimize(Global::gas_names(text, Global::gas_count(text)));
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(GasList)->Arg(60)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

/// Deleting the first gas and renumbering all others, in memory: no key of the database stays where it was.
void DeleteFirstGas(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const std::string bytes = gas_database(count);
    for (auto _ : state) {
        confreg::Text text(bytes);
        delete_gas(text, 1, count);
        benchmark::DoNotOptimize(text.bytes());
    }
}
BENCHMARK(DeleteFirstGas)->Arg(60)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// The same on the disk, with the rewrite and its syncs.
void DeleteFirstGasFromTheFile(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const Database database(count);
    const std::string bytes = gas_database(count);
    for (auto _ : state) {
        confreg::edit(database.file(), database.site(), [&](confreg::Text& text) { delete_gas(text, 1, count); });
        state.PauseTiming();
        database.restore(bytes);
        state.ResumeTiming();
    }
}
BENCHMARK(DeleteFirstGasFromTheFile)->Arg(60)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Thirty keys and the count, in memory.
void AddGas(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const std::string bytes = gas_database(count);
    const std::string section = "G" + std::to_string(count + 1);
    for (auto _ : state) {
        confreg::Text text(bytes);
        for (int k = 0; k < 30; ++k)
            text.escribirclave(section, "key" + std::to_string(k), "-1");
        text.escribirclave("General", "n", std::to_string(count + 1));
        benchmark::DoNotOptimize(text.bytes());
    }
}
BENCHMARK(AddGas)->Arg(60)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
