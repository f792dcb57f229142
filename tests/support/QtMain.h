#pragma once

#include "platform/Dialogs.h"

// Shows what no command trapped as a failure of the test, unless the test has them shown elsewhere.
platform::Dialogs& UnexpectedErrors();
