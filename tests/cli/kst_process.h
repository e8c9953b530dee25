// Runs the kst program as a child process, the way a user's shell does:
// arguments and both output streams in the locale's encoding, standard
// input from a text. The test side speaks core text (system code page,
// with escapes), and the helper converts in both directions.
#pragma once

#include <string>
#include <vector>

struct KstResult {
  int status = -1;
  std::string out;     // standard output as core text, unless it was binary
  std::string err;     // standard error as core text
  std::string rawOut;  // standard output as the bytes the program wrote
};

// Runs kst with the words (core text); `scratch` is a folder for the
// captured streams. With binaryOutput, standard output is left as bytes.
KstResult RunKst(const std::vector<std::string>& words, const char* scratch,
                 bool binaryOutput = false, const std::string& input = "");
// Starts kst with each list of words at once and waits for all of them;
// the results come in the order of the commands.
std::vector<KstResult> RunKstTogether(const std::vector<std::vector<std::string>>& commands,
                                      const char* scratch);
// The lines of a text, without line ends.
std::vector<std::string> LinesOf(const std::string& text);
