#include "partitioner/PartitionRun.h"

#include "base/RunTimeError.h"
#include "base/ScopeExit.h"
#include "base/Text.h"
#include "platform/ToolCall.h"

namespace partitioner {
namespace {

constexpr std::size_t deviceColumn = 60;  // characters of an entry that name the devices

}  // namespace

PartitionRun::PartitionRun(session::App& app, platform::WindowHandle messages,
                           platform::WindowHandle solutions)
    : app_(app), record_{messages, solutions, {}, {}, {}, {}} {
    base::SetText(record_.szOptions, app.State.PartitionFlags);
    base::SetText(record_.szDesign, app.State.sProject);
    base::SetText(record_.szDeviceFile, app.State.ZrxDir + "temp.dev");
    base::SetText(record_.szDirectory, app.State.ZrxDir);
}

bool PartitionRun::HasDocument() const {
    try {
        app_.Host.Files.ReadFile(app_.State.sProject + ".DOC");
        return true;
    } catch (const base::RunTimeError&) {
        return false;
    }
}

std::int32_t PartitionRun::FindSolutions() {
    if (!HasDocument()) {
        app_.Host.Boxes.Say(
            "No documentation file was found. Recompile the design file and specify that expanded product "
            "terms file(doc) be created ");
        return 0;
    }
    const std::string& folder = app_.State.ZrxDir;
    // Kept: the other library's name.
    return Call("zrxtest", "Unable to load " + folder +
                               "zrxtest.  Make sure the file zrxlist.dll is in the " + folder +
                               " directory.");
}

void PartitionRun::ListSolutions() {
    const std::string& folder = app_.State.ZrxDir;
    Call("zrxlist", "Unable to load " + folder + "zrxlist Make sure the file zrxlist.dll is in the " +
                        folder + " directory.");
}

void PartitionRun::Fit(const std::string& entry) {
    base::SetText(record_.szOptions, "-rj");  // what stays if the solution can't be written
    FitSolution(entry);
}

void PartitionRun::FitSolution(const std::string& entry) {
    const std::string& folder = app_.State.ZrxDir;
    const std::string file = folder + "solution.slf";
    app_.Host.Files.WriteFile(file, base::Trim(base::Left(entry, deviceColumn)) + "\r\n");
    base::SetText(record_.szOptions, "-rjof");
    base::SetText(record_.szDeviceFile, file);
    Call("zrxpld",
         "Unable to load zrxpld.dll.  Make sure the file zrxpld.dll is in the " + folder + " directory.");
    app_.Hall.Project->UpdateTreeView();  // shows the designs that were written
}

// Gives 0 too if nothing is called.
std::int32_t PartitionRun::Call(const std::string& name, const std::string& failure) {
    platform::ToolLibraries& libraries = app_.Host.Libraries;
    const auto module = libraries.Load(app_.State.ZrxDir + name);
    if (module == 0) {
        app_.Host.Boxes.Say(failure);
        return 0;
    }
    app_.Host.Desktop.SetHourglass(true);
    const base::ScopeExit done([&] {
        app_.Host.Desktop.SetHourglass(false);
        libraries.Free(module);
    });
    return platform::CallTool(app_.Host, module, name + ".dll", name, record_.Bytes());
}

}  // namespace partitioner
