#pragma once

#include <QString>

// The app home and the standard per-user directories inside it.
//
// The home is $QUORIN_HOME (read on every call, so tests and tools can switch
// it), else the platform's application data location. Paths carry no trailing
// separator.
class AppDirectories
{
public:
    static QString home();
    static QString documents();          // home + "/Documents"
    static QString caches();             // home + "/Library/Caches"
    static QString applicationSupport(); // home + "/Library/Application Support"
    static QString preferences();        // home + "/Library/Preferences"

    // Creates the home and the four directories above (errors are logged only).
    static void ensureLayout();
};
