#include <QCoreApplication>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <cstdio>
#include <stdexcept>

#include "base/PosixFile.h"
#include "devref/DeviceSource.h"

// devref SOURCE TARGET: makes the device database of its readable source.

namespace {

using namespace devref;

[[noreturn]] void Fail(const QSqlError& error) { throw std::runtime_error(error.text().toStdString()); }

// Adds rows to one table.
class Table {
  public:
    // Columns as SQL declares them. Texts are sorted without regard to case.
    Table(const QSqlDatabase& database, const QString& name, const QStringList& columns) : insert_(database) {
        QSqlQuery create(database);
        if (!create.exec("CREATE TABLE " + name + " (" + columns.join(", ") + ")")) Fail(create.lastError());
        const QStringList marks(columns.size(), "?");
        if (!insert_.prepare("INSERT INTO " + name + " VALUES (" + marks.join(", ") + ")")) {
            Fail(insert_.lastError());
        }
    }

    void Add(const QVariantList& row) {
        for (const QVariant& value : row) insert_.addBindValue(value);
        if (!insert_.exec()) Fail(insert_.lastError());
    }

  private:
    QSqlQuery insert_;
};

const QString textColumn = "Name TEXT COLLATE NOCASE";

QVariant Text(const std::string& text) { return QString::fromStdString(text); }
QVariant TextOrNull(const std::string& text) { return text.empty() ? QVariant() : Text(text); }

void WriteNames(const QSqlDatabase& database, const QString& table, const std::vector<std::string>& names) {
    Table rows(database, table, {"PKey INTEGER PRIMARY KEY", textColumn});
    int key = 0;
    for (const std::string& name : names) rows.Add({++key, Text(name)});
}

void WriteMnemonics(const QSqlDatabase& database, const Catalogue& catalogue) {
    Table mnemonics(database, "Mnemonics",
                    {"PKey INTEGER PRIMARY KEY", textColumn, "PinCount INTEGER", "SpecialOptions TEXT"});
    Table libraries(database, "MnemonicLibrary", {"MnemonicKey INTEGER", "LibraryKey INTEGER"});
    Table related(database, "RelatedMnemonics", {"MnemonicKey INTEGER", textColumn});
    Table pins(database, "PinList", {"MnemonicKey INTEGER", "Pin TEXT", "Name TEXT"});
    Table notes(database, "Notes", {"MnemonicKey INTEGER", "Notes TEXT"});
    int key = 0;
    for (const Mnemonic& mnemonic : catalogue.Mnemonics) {
        const QVariant pinCount = mnemonic.Pins < 0 ? QVariant() : mnemonic.Pins;
        mnemonics.Add({++key, Text(mnemonic.Name), pinCount, TextOrNull(mnemonic.SpecialOptions)});
        for (const int library : mnemonic.Libraries) libraries.Add({key, library});
        for (const std::string& name : mnemonic.Related) related.Add({key, Text(name)});
        for (const Pin& pin : mnemonic.PinList)
            pins.Add({key, QString::number(pin.Number), Text(pin.Function)});
        if (!mnemonic.Notes.empty()) notes.Add({key, Text(mnemonic.Notes)});
    }
}

void WriteDevices(const QSqlDatabase& database, const Catalogue& catalogue) {
    Table devices(database, "Devices",
                  {"PKey INTEGER PRIMARY KEY", textColumn, "ManufacturerKey INTEGER", "PackageKey INTEGER",
                   "MnemonicKey INTEGER"});
    Table alternates(database, "AlternatePartNumbers",
                     {"DeviceKey INTEGER", "PartNumber TEXT COLLATE NOCASE"});
    int key = 0;
    for (const Device& device : catalogue.Devices) {
        devices.Add({++key, Text(device.Name), device.Manufacturer, device.Package, device.Mnemonic});
        for (const std::string& number : device.AlternatePartNumbers) alternates.Add({key, Text(number)});
    }
}

void Index(const QSqlDatabase& database) {
    QSqlQuery query(database);
    for (const auto& [table, column] :
         std::initializer_list<std::pair<QString, QString>>{{"Devices", "ManufacturerKey"},
                                                            {"MnemonicLibrary", "MnemonicKey"},
                                                            {"AlternatePartNumbers", "DeviceKey"},
                                                            {"RelatedMnemonics", "MnemonicKey"},
                                                            {"PinList", "MnemonicKey"},
                                                            {"Notes", "MnemonicKey"}}) {
        const QString name = table + "_" + column;
        if (!query.exec("CREATE INDEX " + name + " ON " + table + " (" + column + ")"))
            Fail(query.lastError());
    }
}

void WriteDatabase(const Catalogue& catalogue, const QString& target) {
    QFile::remove(target);
    auto database = QSqlDatabase::addDatabase("QSQLITE");
    database.setDatabaseName(target);
    if (!database.open() || !database.transaction()) Fail(database.lastError());
    WriteNames(database, "Manufacturers", catalogue.Manufacturers);
    WriteNames(database, "Packages", catalogue.Packages);
    WriteNames(database, "Libraries", catalogue.Libraries);
    WriteMnemonics(database, catalogue);
    WriteDevices(database, catalogue);
    Index(database);
    if (!database.commit()) Fail(database.lastError());
    database.close();
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    if (argc != 3) return 2;
    try {
        constexpr std::uint64_t maxSource = 8u << 20;
        WriteDatabase(ReadCatalogue(base::ReadWhole(argv[1], maxSource)), QString::fromLocal8Bit(argv[2]));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.what());
        QFile::remove(QString::fromLocal8Bit(argv[2]));  // a half file would pass for the whole
        return 1;
    }
}
