// Times what a user waits for when a list is long: opening it, adding files to it, sorting it, adding it up.
// Each runs at two or three lengths, so that growth with the square of the length would show.
#include "backends/tags/tag_information.h"
#include "playlist/ksl_format.h"
#include "playlist/playlist_order.h"
#include "playlist/playlist_totals.h"
#include "support/test_program.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

using namespace kestrune;

PlaylistRow MakeRow(int number) {
    PlaylistRow row;
    const int shuffled = static_cast<int>(number * 7919LL % 100003);
    row.fields[RowText] =
        QStringLiteral("%1.Artist %2 - Title %3").arg(number).arg(shuffled % 97).arg(shuffled);
    row.fields[SubTime] =
        QStringLiteral("%1:%2").arg(shuffled % 60, 2, 10, QChar(u'0')).arg(number % 60, 2, 10, QChar(u'0'));
    row.fields[SubType] = QStringLiteral("mp3");
    row.fields[SubSize] = QStringLiteral("%1.%2m").arg(shuffled % 12).arg(number % 10);
    row.fields[SubFolder] = QStringLiteral("/music/album %1/").arg(number / 12);
    row.fields[SubFileName] = QStringLiteral("track %1.mp3").arg(shuffled);
    row.fields[SubFormats] = QStringLiteral("MPEG Layer-3, 44,100 Hz, 128 KBPS, Stereo");
    return row;
}

void Fill(PlaylistRows& rows, int count) {
    for (int number = 1; number <= count; ++number) {
        rows.Append(MakeRow(number));
    }
}

// Probes files as on a machine.
class ProbingComponents : public FakeComponents {
public:
    std::unique_ptr<KSTAudioInformation2> MakeAudioInformation() override {
        return kestrune::MakeAudioInformation();
    }
};

struct House {
    QTemporaryDir folder;
    TestProgram<ProbingComponents> whole;
    PlaylistRows& rows = whole.program.rows;
    Admission& admission = whole.program.admission;
    PlaylistFiles& files = whole.program.files;

    House() { whole.state.AppPath = folder.path(); }
};

void OpenKsl(benchmark::State& run) {
    House house;
    Fill(house.rows, static_cast<int>(run.range(0)));
    house.files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    for (auto _ : run) {
        house.files.OpenSavePlayList(QStringLiteral("OPEN"), true);
    }
    if (house.rows.Count() != run.range(0)) {
        run.SkipWithError("rows were lost");
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(OpenKsl)->Arg(8000)->Arg(32000)->Unit(benchmark::kMillisecond);

void SaveKsl(benchmark::State& run) {
    House house;
    Fill(house.rows, static_cast<int>(run.range(0)));
    for (auto _ : run) {
        house.files.OpenSavePlayList(QStringLiteral("SAVE"), true);
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(SaveKsl)->Arg(8000)->Arg(32000)->Unit(benchmark::kMillisecond);

// KESTRUNE_BENCH_FILES names a folder of audio files; all are admitted by probing.
void AdmitFiles(benchmark::State& run) {
    const QString folder = qEnvironmentVariable("KESTRUNE_BENCH_FILES");
    const QStringList names = QDir(folder).entryList(QDir::Files, QDir::Name);
    if (names.isEmpty()) {
        run.SkipWithError("KESTRUNE_BENCH_FILES names no folder with files");
        return;
    }
    for (auto _ : run) {
        House house;
        for (int i = 0; i < run.range(0); ++i) {
            house.admission.AddFiletoList(folder + u'/', names[i % names.size()]);
        }
        if (house.rows.Count() != run.range(0)) {
            run.SkipWithError("not all files were admitted");
        }
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(AdmitFiles)->Arg(1250)->Arg(5000)->Unit(benchmark::kMillisecond);

// The same without a probe: what the list itself costs.
void AdmitEntries(benchmark::State& run) {
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a.mp3")));
    if (!file.open(QIODevice::WriteOnly)) {
        run.SkipWithError("no file");
        return;
    }
    file.close();
    for (auto _ : run) {
        House house;
        for (int i = 0; i < run.range(0); ++i) {
            house.admission.AddFiletoListfromList(folder.path() + u'/', QStringLiteral("a.mp3"),
                                                  QStringLiteral("Title"), 100, 4000);
            RestoreIndexOrder(house.rows);
            benchmark::DoNotOptimize(TotalTextsOf(house.rows));
        }
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(AdmitEntries)->Arg(2500)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);

void SortByTitle(benchmark::State& run) {
    PlaylistRows rows;
    Fill(rows, static_cast<int>(run.range(0)));
    for (auto _ : run) {
        OrderList(rows, static_cast<int>(OrderIndex::Title));
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(SortByTitle)->Arg(2500)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);

void SortByIndex(benchmark::State& run) {
    PlaylistRows rows;
    Fill(rows, static_cast<int>(run.range(0)));
    for (auto _ : run) {
        OrderList(rows, static_cast<int>(OrderIndex::Path));
        OrderList(rows, static_cast<int>(OrderIndex::Index));
    }
    run.SetItemsProcessed(run.iterations() * run.range(0));
}
BENCHMARK(SortByIndex)->Arg(2500)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond);

void Totals(benchmark::State& run) {
    PlaylistRows rows;
    Fill(rows, static_cast<int>(run.range(0)));
    for (auto _ : run) {
        benchmark::DoNotOptimize(TotalTextsOf(rows));
    }
}
BENCHMARK(Totals)->Arg(10000)->Arg(40000);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
