#include <filesystem>

#include "platform/qt/HostApplication.h"
#include "platform/qt/HostRegistry.h"
#include "wavrik/frmMain.h"

// Wavrik [FILE] [/NoSplash]. The file is one of the logic (C:\…) or of the host.
int main(int argc, char** argv) {
    platform::qt::HostApplication application(argc, argv);
    std::vector<std::string> arguments;
    for (const QString& argument : application.arguments().mid(1))
        arguments.push_back(argument.toStdString());
    const platform::PathMap paths;
    wavrik::frmMain window(paths);
    platform::qt::HostRegistry settings;
    const auto start = [&] {
        window.Place(settings);
        window.show();
        std::string file = wavrik::FileOf(arguments);
        if (file.empty()) return;
        if (!platform::PathMap::IsDrivePath(file))
            file = paths.FromHost(std::filesystem::absolute(file).string());
        window.Open(file);
    };
    return application.Attempt(start) ? platform::qt::HostApplication::exec() : 1;
}
