#include "app/product.h"

const char* const kProductName = "Kestrom";
const char* const kMakerName = "Orva Software Ltd.";
const char* const kProductVersion = "1.14";
const char* const kRightsLine = "Copyright (C) 2026 Kestrom の開発者";
const char* const kHomePage = "https://kestrom.example/";
