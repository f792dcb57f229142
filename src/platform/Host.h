#pragma once

#include "platform/Clipboard.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/InputJournal.h"
#include "platform/Link.h"
#include "platform/Printers.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "platform/System.h"
#include "platform/ToolLibraries.h"
#include "platform/Windows.h"

namespace platform {

// The desktop system as one value: made once by the program's entry (or by a test), passed by reference.
struct Host {
    FileSystem& Files;
    Registry& Settings;
    Dialogs& Boxes;
    Clipboard& Clip;
    Processes& Programs;
    ToolLibraries& Libraries;
    System& Desktop;
    Clock& Time;
    Windows& Screen;
    Printers& Paper;
    ToolLink& Link;
    InputJournal& Journal;
};

}  // namespace platform
