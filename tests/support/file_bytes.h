// Whole files as byte strings, for tests that set up and inspect files.
#pragma once

#include <string>

// The bytes of a file; empty when it cannot be read.
std::string TestReadFile(const char* path);
// Writes the bytes, creating the file's missing folders.
void TestWriteFile(const char* path, const std::string& bytes);
