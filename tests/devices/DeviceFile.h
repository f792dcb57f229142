#pragma once

#include <gtest/gtest.h>

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <string>
#include <vector>

#include "devices/DeviceSelection.h"
#include "platform/qt/HostDatabase.h"
#include "platform/qt/HostFileSystem.h"
#include "support/Doubles.h"

namespace devices {

inline void PrintTo(const ListItem& item, std::ostream* out) { *out << item.Text << '=' << item.Key; }

// An SQLite file of the statements.
inline void MakeFile(const std::string& hostPath, const std::vector<std::string>& statements) {
    {
        auto database = QSqlDatabase::addDatabase("QSQLITE", "maker");
        database.setDatabaseName(QString::fromStdString(hostPath));
        if (!database.open()) throw std::runtime_error(hostPath);
        for (const std::string& statement : statements) {
            QSqlQuery query(database);
            if (!query.exec(QString::fromStdString(statement))) {
                throw std::runtime_error(query.lastError().text().toStdString());
            }
        }
    }
    QSqlDatabase::removeDatabase("maker");
}

inline const std::vector<std::string> catalogue = {
    "Create Table Manufacturers (PKey Integer, Name Text)",
    "Create Table Packages (PKey Integer, Name Text)",
    "Create Table Devices (PKey Integer, Name Text, ManufacturerKey Integer, PackageKey Integer,"
    " MnemonicKey Integer)",
    "Create Table Mnemonics (PKey Integer, Name Text, PinCount Integer, SpecialOptions Text)",
    "Create Table MnemonicLibrary (MnemonicKey Integer, LibraryKey Integer)",
    "Create Table Libraries (PKey Integer)",
    "Create Table AlternatePartNumbers (DeviceKey Integer, PartNumber Text)",
    "Create Table RelatedMnemonics (MnemonicKey Integer, Name Text)",
    "Create Table PinList (MnemonicKey Integer, Pin Text, Name Text)",
    "Create Table Notes (MnemonicKey Integer, Notes Text)",
    "Insert Into Libraries Values (1), (2)",
    "Insert Into Manufacturers Values (1, 'Zeta'), (2, 'Alpha'), (9, 'Unnumbered')",
    "Insert Into Packages Values (1, 'PLCC'), (2, 'DIP')",
    "Insert Into Mnemonics Values (1, 'P4', 4, 'fast'), (2, 'V2', 2, Null), (3, Null, Null, '')",
    "Insert Into MnemonicLibrary Values (1, 1), (1, 2), (2, 1), (3, 2), (2, 7)",
    "Insert Into Devices Values (10, '  Zap4 ', 2, 2, 1), (11, 'Bee2', 2, 2, 2), (12, 'Nil', 2, 2, 3),"
    " (13, 'Other', 1, 2, 1), (14, 'Far', 9, 2, 1), (15, Null, 2, 1, 2), (16, 'Lost', 2, 1, 99)",
    "Insert Into AlternatePartNumbers Values (10, 'Z4B'), (10, 'Z4A'), (11, Null)",
    "Insert Into RelatedMnemonics Values (1, 'V2'), (1, 'P3')",
    "Insert Into PinList Values (1, '7', 'I/CLK'), (1, '12', 'GND'), (1, 'A10', Null), (1, 'AA10', 'I'),"
    " (1, Null, 'NC')",
    "Insert Into Notes Values (1, 'One.' || char(13, 10) || 'Two.')",
};

// A device database over a folder of the test's.
class DeviceFile : public ::testing::Test {
  protected:
    DeviceFile() { Database.DatabasePath(Folder.Logic("Devices.ref")); }

    std::string HostPath() const { return (Folder.Path() / "Devices.ref").string(); }
    void Open(const std::vector<std::string>& statements) {
        MakeFile(HostPath(), statements);
        ASSERT_TRUE(Database.OpenDatabase()) << Boxes.LastText();
    }

    doubles::TemporaryFolder Folder;
    doubles::Dialogs Boxes;
    platform::qt::HostFileSystem Files;
    platform::qt::HostDatabaseEngine Engine{Files, JETREADER};
    clsDeviceDatabase Database{Engine, Boxes};
};

}  // namespace devices
