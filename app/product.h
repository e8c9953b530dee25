// What the program says about itself: its name, its version, the rights
// line and the home page. The settings file, the window title and the
// about box all take them from here.
#pragma once

extern const char* const kProductName;
// The maker's name, which titles the boxes that come before the settings.
extern const char* const kMakerName;
extern const char* const kProductVersion;
extern const char* const kRightsLine;
extern const char* const kHomePage;
