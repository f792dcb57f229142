// The device dialog until it is shown, over a catalogue of 3,000 devices without an index.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "devices/frmDevices.h"
#include "platform/qt/HostDatabase.h"
#include "platform/qt/HostFileSystem.h"
#include "support/Doubles.h"

namespace {

void MakeCatalogue(const QString& path) {
    auto database = QSqlDatabase::addDatabase("QSQLITE", "maker");
    database.setDatabaseName(path);
    database.open();
    const QString numbers = "With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 3000) ";
    for (const QString& statement : {
             QString("Create Table Manufacturers As Select 1 As PKey, 'Maker' As Name"),
             QString("Create Table Packages As Select 1 As PKey, 'DIP' As Name"),
             "Create Table Devices As " + numbers +
                 "Select i As PKey, 'Device' || (i * 7919 % 3000) As Name, 1 As ManufacturerKey,"
                 " 1 As PackageKey, i As MnemonicKey From n",
             "Create Table Mnemonics As " + numbers +
                 "Select i As PKey, 'M' || i As Name, 84 As PinCount, '' As SpecialOptions From n",
             "Create Table MnemonicLibrary As " + numbers +
                 "Select i % 3000 + 1 As MnemonicKey, 1 As LibraryKey From n",
             QString("Create Table Libraries As Select 1 As PKey"),
             "Create Table AlternatePartNumbers As " + numbers +
                 "Select i As DeviceKey, 'A' || i As PartNumber From n",
             "Create Table RelatedMnemonics As " + numbers +
                 "Select i As MnemonicKey, 'R' || i As Name From n",
             "Create Table PinList As " + numbers +
                 ", p(k) As (Select 1 Union All Select k + 1 From p Where k < 84) "
                 "Select i As MnemonicKey, k As Pin, 'I/O' As Name From n, p",
             "Create Table Notes As " + numbers + "Select i As MnemonicKey, 'Note' As Notes From n",
         }) {
        QSqlQuery(database).exec(statement);
    }
    database.close();
    database = {};
    QSqlDatabase::removeDatabase("maker");
}

void ShowDevices(benchmark::State& state) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("Devices.ref");
    MakeCatalogue(path);
    const platform::qt::HostFileSystem files;
    platform::qt::HostDatabaseEngine engine(files);
    doubles::Dialogs boxes;
    const std::string folderPath = files.FromHostPath(folder.path().toStdString()) + "\\";
    for ([[maybe_unused]] auto _ : state) {
        devices::frmDevices form(engine, boxes, folderPath, "&", nullptr);
        form.show();
        QApplication::processEvents();
        if (form.findChild<QListWidget*>("lstDevices")->count() != 3000)
            state.SkipWithError("not all devices");
    }
}
BENCHMARK(ShowDevices)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
