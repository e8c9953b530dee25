// The files below a folder on disk, by path relative to it ("a/b.txt", core
// text) with their bytes, for comparing what came back with what went in.
#pragma once

#include <map>
#include <string>

typedef std::map<std::string, std::string> TestTree;

TestTree TestTreeOf(const char* folder);
