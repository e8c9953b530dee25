// A stand-in for the main window: it answers questions and dialogs from a
// script and records what the flows told it.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "app/worker.h"
#include "lib/lstr.h"
#include "store/cond.h"
#include "ui/main_view.h"

class ScriptedView : public TMainView {
 public:
  std::deque<TAnswer> answers;     // for ask, in order
  std::deque<std::string> saveAs;  // chosen paths of the save dialog; "" cancels
  std::deque<std::string> toOpen;  // one chosen path per open dialog; "" cancels
  std::vector<std::string> questions;
  std::vector<std::string> started;  // arguments of new copies
  std::vector<std::string> forwardedTo;
  std::vector<std::string> othersHave;  // full paths open in other copies
  TFileChoice lastChoice;
  std::string title, rootLabel, status;
  TRecList selected;
  TRec* tree = nullptr;
  bool treeFocus = true;
  int commandUpdates = 0;
  std::vector<int32_t> commands;  // ids of the commands started
  std::vector<int32_t> posted;    // ids put in the window's queue

  TAnswer ask(const char* question, bool) override {
    questions.push_back(question);
    TAnswer a = answers.empty() ? kAnswerNo : answers.front();
    if (!answers.empty()) answers.pop_front();
    return a;
  }
  bool chooseArchivesToOpen(TFileChoice& choice) override { return choose(choice, toOpen); }
  bool chooseArchiveToSave(TFileChoice& choice) override { return choose(choice, saveAs); }
  bool chooseFolder(const char*, LStr&) override { return false; }
  bool hasDocuments = true;
  bool documentsFolder(LStr& folder) override {
    folder = "docs";
    return hasDocuments;
  }
  LStr programFolder() override { return "program"; }
  void setTitle(const char* windowTitle, const char* label) override {
    title = windowTitle;
    rootLabel = label;
  }
  void setStatus(const char* text) override { status = text; }
  void updateCommands() override { commandUpdates++; }
  void selection(TRecList& out) override {
    out.clear();
    out.addAll(selected);
  }
  TRec* treeSelected() override { return tree; }
  bool treeHasFocus() override { return treeFocus; }
  bool bringForwardCopyWith(const char* fullPath) override {
    for (const std::string& other : othersHave)
      if (other == fullPath) {
        forwardedTo.push_back(fullPath);
        return true;
      }
    return false;
  }
  void startCopy(const char* argument) override { started.push_back(argument ? argument : ""); }
  void pause(int32_t) override {}
  bool clipboardHasFiles = false;
  std::vector<std::string> clipboard;  // the file list on it
  int clipboardOpen = 0;               // opens minus closes
  bool addStartedWhileHeld = false;
  void openClipboard() override { clipboardOpen++; }
  bool clipboardFiles(LStrs& paths) override {
    for (const std::string& path : clipboard) paths.add(new LStr(path.c_str()));
    return clipboardHasFiles;
  }
  void closeClipboard() override { clipboardOpen--; }
  int32_t openResult = 33;          // the shell's answer to each open
  std::vector<std::string> opened;  // paths given to the default application
  int reloads = 0;
  int32_t openWithDefaultApp(const char* path) override {
    opened.push_back(path);
    return openResult;
  }
  void archiveReloaded() override { reloads++; }
  // The dialogs of the long commands go on while this holds, and tell what
  // they were shown.
  bool dialogsGoOn = true;
  std::string typedComment;      // into the add dialog
  std::string typedDestination;  // into the extract dialog; "" keeps its text
  std::vector<std::string> addDialogPaths;
  std::string shownDestination;
  std::vector<std::string> dialogs;  // "add", "extract", "delete", in order
  bool runAddDialog(TRec*, LStrs& paths, TCond& cond) override {
    dialogs.push_back("add");
    for (const LStr* path : paths) addDialogPaths.push_back(path->ptr);
    if (dialogsGoOn) cond.addComment = typedComment.c_str();
    return dialogsGoOn;
  }
  bool runExtractDialog(LStr& destination, const TRecList&, TCond&) override {
    dialogs.push_back("extract");
    shownDestination = destination.ptr;
    if (!typedDestination.empty()) destination = typedDestination.c_str();
    return dialogsGoOn;
  }
  bool runDeleteDialog(const TRecList&, TCond&) override {
    dialogs.push_back("delete");
    return dialogsGoOn;
  }
  // What the last command started with.
  std::string startedComment;
  std::string startedDestination;
  bool searchOk = false;  // the answer of the search dialog
  std::vector<std::string> searchTitles;
  int searchRowsCleared = 0;
  bool runSearchDialog(const char* dialogTitle, TCond&, const TRecList&) override {
    searchTitles.push_back(dialogTitle);
    return searchOk;
  }
  void clearSearchRows() override { searchRowsCleared++; }
  void postCommand(int32_t id) override { posted.push_back(id); }
  int32_t lastRecords = 0;  // of the command started last
  const TCond* lastCond = nullptr;
  void startCommand(TThread* thread) override {
    commands.push_back(thread->cmdId);
    if (thread->cond != nullptr) startedComment = thread->cond->addComment.ptr;
    startedDestination = thread->destDir.ptr;
    lastRecords = thread->records.count;
    lastCond = thread->cond;
    if (clipboardOpen > 0) addStartedWhileHeld = true;
    delete thread;
  }

 private:
  bool choose(TFileChoice& choice, std::deque<std::string>& script) {
    lastChoice.folder = choice.folder;
    lastChoice.name = choice.name;
    if (script.empty()) return false;
    std::string path = script.front();
    script.pop_front();
    if (path.empty()) return false;
    choice.chosen.add(new LStr(path.c_str()));
    choice.filterIdx = 2;
    return true;
  }
};
