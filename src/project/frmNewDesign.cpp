#include "project/frmNewDesign.h"

#include <QDate>
#include <QLineEdit>
#include <QLocale>

#include "platform/qt/Captions.h"

namespace project {
namespace {

constexpr struct {
    const char* Control;
    const char* Label;
    std::string DesignFields::*Field;
} rows[] = {
    {"ProjectName", "Name:", &DesignFields::ProjectName}, {"PartNo", "PartNo:", &DesignFields::PartNo},
    {"ProjDate", "Date:", &DesignFields::ProjDate},       {"Revision", "Revision:", &DesignFields::Revision},
    {"Designer", "Designer:", &DesignFields::Designer},   {"Company", "Company:", &DesignFields::Company},
    {"Assembly", "Assembly:", &DesignFields::Assembly},   {"Location", "Location:", &DesignFields::Location},
    {"Device", "Device:", &DesignFields::Device},
};

constexpr int boxWidth = 36;  // characters: a name may have 32

// Where the company of the user is kept.
constexpr const char* userKey = "Software\\Brennick Labs\\Korvane\\5.0\\User";
constexpr const char* companyValue = "Company";

std::string ReadCompany(platform::Registry& settings) {
    const auto key = settings.Open(userKey, platform::Registry::Access::Read);
    if (!key) return {};
    const auto company = settings.QueryText(*key, companyValue);
    settings.Close(*key);
    return company.value_or("");
}

// A store that can't be written to costs the next design its preset alone.
void KeepCompany(platform::Registry& settings, const std::string& company) {
    if (company == ReadCompany(settings)) return;
    const auto key = settings.Create(userKey, "Korvane");
    if (!key) return;
    settings.SetText(*key, companyValue, company);
    settings.Flush(*key);
    settings.Close(*key);
}

}  // namespace

frmNewDesign::frmNewDesign(session::App& app, QWidget* owner)
    : Form("frmNewDesign", "Design Properties", owner), app_(app) {
    LayOut({Fields(), Buttons({{"OK", "OK", [this] { OK_Click(); }},
                               {"Cancel", "Cancel", [this] { Cancel_Click(); }}})});
    boxes_.front()->selectAll();  // what is typed is the name
}

QLayout* frmNewDesign::Fields() {
    DesignFields preset;
    preset.ProjDate = QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString();
    preset.Company = ReadCompany(app_.Host.Settings);
    std::vector<platform::qt::Field> fields;
    for (const auto& row : rows) {
        auto* box = platform::qt::Named(row.Control, new QLineEdit);
        box->setText(platform::qt::Shown(preset.*row.Field));
        box->setMinimumWidth(platform::qt::InCharacters(boxWidth, 0).width());
        boxes_.push_back(box);
        fields.push_back({std::string("lbl") + row.Control, row.Label, box});
    }
    return platform::qt::Fields(fields);
}

DesignFields frmNewDesign::ControlValues() const {
    DesignFields values;
    std::size_t i = 0;
    for (const auto& row : rows) values.*row.Field = boxes_[i++]->text().toStdString();
    return values;
}

void frmNewDesign::OK_Click() {
    const DesignFields values = ControlValues();
    if (AcceptNewDesign(
            app_, [this](bool visible) { setVisible(visible); }, values)) {
        KeepCompany(app_.Host.Settings, values.Company);
    }
}

}  // namespace project
