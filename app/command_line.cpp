#include "app/command_line.h"

#include "lib/cmdline.h"
#include "lib/fail.h"
#include "lib/msg.h"
#include "lib/option.h"
#include "lib/path_parts.h"
#include "lib/sys.h"

const char* const kSettingsName = "Kestrom.ini";

void FParseCommandLine(const char* commandLine, TStartArgs& out) {
  LOptTable options;
  options.addStrc("af", &out.archivePath, nullptr);
  options.addInt("ol", &out.openLast, 0, 1, /*defaultValue=*/1);
  options.addStrc("cf", &out.settingsName, nullptr);
  LStrs words;
  FSplitCommandLine(commandLine, words);
  for (int32_t i = 1; i < words.count; i++) {
    const LStr* word = words[i];
    if (options.parseArg(word->ptr) != 0) continue;
    if (word->length > 0 && (word->ptr[0] == '-' || word->ptr[0] == '/'))
      FError(kMsgErrorBox, "オプションが正しくありません : %s", word->ptr);
    out.args.add(new LStr(*word));
  }
}

LStr FResolveSettingsPath(const char* name) {
  if (FIsAbsolute(name)) return LStr(name);
  LStr path;
  if (!SysLocalAppDataFolder(path)) return LStr();
  FAddSep(path);
  path.append("OrvaSoft");
  FAddSep(path);
  path.append(name);
  return path;
}
