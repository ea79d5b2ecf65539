#include "dmtest.h"

using namespace dmtest;

namespace {

// Notes the kinds of all warnings, and the messages.
class Warnings : public oaObserver<oaLibDefList> {
public:
  Warnings() : oaObserver<oaLibDefList>(1) {}
  oaBoolean onLoadWarnings(oaLibDefList *list, const oaString &msg, oaLibDefListWarningTypeEnum type) override {
    kinds.push_back(type);
    messages.push_back(std::string(msg));
    withoutList += list == nullptr ? 1 : 0;
    return true;
  }
  std::vector<int> kinds;
  std::vector<std::string> messages;
  int withoutList = 0;
};

class LibDefs : public DMTest {
protected:
  ~LibDefs() override { closeAll(); }
  // Libraries and lists stay open to the end of the process otherwise.
  static void closeAll() {
    oaIter<oaLib> open(oaLib::getOpenLibs());
    while (oaLib *lib = open.getNext()) {
      lib->close();
    }
    oaIter<oaLibDefList> lists(oaLibDefList::getLibDefLists());
    while (oaLibDefList *list = lists.getNext()) {
      list->destroy();
    }
  }
  // A library on disk that is not open.
  void makeLib(const std::string &name) { writeFile(path(name) + "/.oalib", ""); }
  static std::vector<std::string> openLibs() {
    std::vector<std::string> names = namesIn<oaLib>(oaLib::getOpenLibs());
    std::sort(names.begin(), names.end());
    return names;
  }
  static std::string fullPathOf(const std::string &lib) {
    oaString full;
    oaLib::find(named(lib))->getFullPath(full);
    return std::string(full);
  }
  static std::string membersOf(oaLibDefList *list) {
    std::string text;
    oaIter<oaLibDefListMem> members(list->getMembers());
    while (oaLibDefListMem *member = members.getNext()) {
      oaString name;
      if (member->getType() == oacLibDefType) {
        oaScalarName lib;
        static_cast<oaLibDef *>(member)->getLibName(lib);
        lib.get(oaNativeNS(), name);
      } else {
        static_cast<oaLibDefListRef *>(member)->getRefListPath(name);
      }
      text += (text.empty() ? "" : " ") + std::string(name);
    }
    return text;
  }
};

TEST_F(LibDefs, MissingFileIsAWarningAndNoTopList) {
  Warnings warnings;
  oaLibDefList::openLibs();
  EXPECT_THAT(warnings.kinds, testing::ElementsAre(oacNoDefaultLibDefListWarning));
  EXPECT_EQ(warnings.withoutList, 1);
  EXPECT_EQ(oaLibDefList::getTopList(), nullptr);
  EXPECT_EQ(raisedBy([&] { oaLibDefList::openLibs(path("none.defs").c_str()); }), oacLibDefListFileNotReadable);
  EXPECT_TRUE(oaLibDefList::getLibDefLists().isEmpty());
}

TEST_F(LibDefs, WorkingFolderComesBeforeHome) {
  makeLib("a");
  makeLib("b");
  writeFile(path("home/lib.defs"), "DEFINE a ../a\n");
  oaLibDefList::openLibs();
  EXPECT_THAT(openLibs(), testing::ElementsAre("a"));
  writeFile(path("work/lib.defs"), "DEFINE b ../b\n");
  oaLibDefList::openLibs();
  EXPECT_THAT(openLibs(), testing::ElementsAre("a", "b"));
  oaString top;
  oaLibDefList::getTopList()->getFullPath(top);
  EXPECT_EQ(std::string(top), path("work/lib.defs"));
  // What cannot be loaded changes nothing.
  EXPECT_EQ(raisedBy([&] { oaLibDefList::openLibs(path("none.defs").c_str()); }), oacLibDefListFileNotReadable);
  oaLibDefList::getTopList()->getFullPath(top);
  EXPECT_EQ(std::string(top), path("work/lib.defs"));
}

// One row: files, then what openLibs() makes of the first one.
TEST_F(LibDefs, HierarchiesAndTheirFaults) {
  for (const char *lib : {"a", "b", "sub/c"}) {
    makeLib(lib);
  }
  writeFile(path("broken/.oalib"), "<Library DMSystem=");
  std::filesystem::create_symlink(path("sub/inner.defs"), path("link.defs"));
  const std::string binary("\x67\x45\x23\x01\x00\x00\xff\xfe", 8);
  const struct {
    const char *name;
    std::vector<std::pair<std::string, std::string>> files;
    std::vector<std::string> open;
    std::vector<int> warnings;
    bool hasTop;
  } cases[] = {
      {"paths start at the file", {{"t.defs", "DEFINE a a\nDEFINE b ./b\n"}}, {"a", "b"}, {}, true},
      {"empty file", {{"t.defs", ""}}, {}, {}, true},
      {"include chain",
       {{"t.defs", "INCLUDE sub/inner.defs\n"},
        {"sub/inner.defs", "DEFINE c c\nINCLUDE ../t2.defs\n"},
        {"t2.defs", "DEFINE b b\n"}},
       {"b", "c"},
       {},
       true},
      {"paths of a linked file start at its target",
       {{"t.defs", "INCLUDE link.defs\n"}, {"sub/inner.defs", "DEFINE c c\n"}},
       {"c"},
       {},
       true},
      {"last definition counts",
       {{"t.defs", "DEFINE a b\nDEFINE a a\n"}},
       {"a"},
       {oacMultiDefinitionsLibDefListWarning},
       true},
      {"missing library",
       {{"t.defs", "DEFINE none none\nDEFINE a a\n"}},
       {"a"},
       {oacCannotOpenLibLibDefListWarning},
       true},
      {"malformed library", {{"t.defs", "DEFINE x broken\n"}}, {}, {oacCannotOpenLibLibDefListWarning}, true},
      {"missing include",
       {{"t.defs", "INCLUDE none.defs\nDEFINE a a\n"}},
       {"a"},
       {oacCannotOpenIncludeLibDefListWarning},
       true},
      {"file that includes itself",
       {{"t.defs", "INCLUDE t.defs\nDEFINE a a\n"}},
       {"a"},
       {oacRecursiveIncludeLibDefListWarning},
       true},
      {"circle of includes",
       {{"t.defs", "INCLUDE t2.defs\nDEFINE a a\n"}, {"t2.defs", "INCLUDE ./sub/../t.defs\n"}},
       {"a"},
       {oacRecursiveIncludeLibDefListWarning},
       true},
      {"file included twice",
       {{"t.defs", "INCLUDE t2.defs\nINCLUDE t2.defs\n"}, {"t2.defs", "DEFINE a a\n"}},
       {"a"},
       {},
       true},
      {"unknown variable",
       {{"t.defs", "DEFINE b $OAKIT_TEST_NONE/b\nDEFINE a a\n"}},
       {"a"},
       {oacUndefinedVarLibDefListWarning},
       true},
      {"assignment to nothing",
       {{"t.defs", "ASSIGN b libMode shared\nDEFINE a a\n"}},
       {"a"},
       {oacLibNameUndefinedLibDefListWarning},
       true},
      {"syntax error opens nothing",
       {{"t.defs", "DEFINE a a\nDEFINE b\n"}},
       {},
       {oacSyntaxErrorLibDefListWarning},
       false},
      {"syntax error in an include",
       {{"t.defs", "DEFINE a a\nINCLUDE t2.defs\n"}, {"t2.defs", "nonsense\n"}},
       {},
       {oacSyntaxErrorLibDefListWarning},
       false},
      {"binary", {{"t.defs", binary}}, {}, {oacSyntaxErrorLibDefListWarning}, false},
      {"binary include",
       {{"t.defs", "INCLUDE t2.defs\n"}, {"t2.defs", binary}},
       {},
       {oacSyntaxErrorLibDefListWarning},
       false},
  };
  ::unsetenv("OAKIT_TEST_NONE");
  for (const auto &c : cases) {
    SCOPED_TRACE(c.name);
    for (const auto &file : c.files) {
      writeFile(path(file.first), file.second);
    }
    Warnings warnings;
    oaLibDefList::openLibs(path("t.defs").c_str());
    EXPECT_EQ(openLibs(), c.open);
    EXPECT_EQ(warnings.kinds, c.warnings) << testing::PrintToString(warnings.messages);
    EXPECT_EQ(oaLibDefList::getTopList() != nullptr, c.hasTop);
    closeAll();
  }
}

TEST_F(LibDefs, DeepChainOfIncludesEnds) {
  for (int i = 0; i < 200; ++i) {
    writeFile(path("t" + std::to_string(i) + ".defs"), "INCLUDE t" + std::to_string(i + 1) + ".defs\n");
  }
  Warnings warnings;
  oaLibDefList::openLibs(path("t0.defs").c_str());
  EXPECT_EQ(warnings.kinds.size(), 1u);
}

TEST_F(LibDefs, SecondLoadKeepsWhatIsUnchanged) {
  makeLib("a");
  makeLib("b");
  makeLib("b2");
  writeFile(path("t.defs"), "DEFINE a a\nDEFINE b b\n");
  oaLibDefList::openLibs(path("t.defs").c_str());
  oaLib *a = oaLib::find(named("a"));
  oaLib *b = oaLib::find(named("b"));
  oaLibDefList *top = oaLibDefList::getTopList();
  oaLibDef *definition = oaLibDef::find(top, named("a"));
  oaLibDefList::openLibs(path("t.defs").c_str());
  EXPECT_EQ(oaLib::find(named("a")), a);
  EXPECT_EQ(oaLibDefList::getTopList(), top);
  EXPECT_EQ(oaLibDef::find(top, named("a")), definition);
  EXPECT_EQ(oaLibDefList::getLibDefLists().getCount(), 1u);

  writeFile(path("t.defs"), "DEFINE a a\nDEFINE b b2\n");
  oaLibDefList::openLibs(path("t.defs").c_str());
  EXPECT_EQ(oaLib::find(named("a")), a);
  EXPECT_EQ(fullPathOf("b"), path("b2"));
  EXPECT_FALSE(b->isValid());
  EXPECT_EQ(membersOf(top), "a b");
}

TEST_F(LibDefs, ModesOfAList) {
  writeFile(path("t.defs"), "DEFINE a a\n");
  std::filesystem::create_symlink(path("t.defs"), path("link.defs"));
  EXPECT_EQ(raisedBy([&] { oaLibDefList::get(path("t.defs").c_str(), 'x'); }), oacUndefinedLibDefListMode);
  EXPECT_EQ(raisedBy([&] { oaLibDefList::get(path("none.defs").c_str(), 'r'); }), oacLibDefListFileNotReadable);
  EXPECT_EQ(raisedBy([&] { oaLibDefList::get(path("work").c_str(), 'a'); }), oacLibDefListFileNotWritable);
  EXPECT_EQ(raisedBy([&] { oaLibDefList::get(path("link.defs").c_str(), 'a'); }),
            oacLibDefFileCannotAppendSymbolicLink);

  oaLibDefList *list = oaLibDefList::get(path("t.defs").c_str(), 'r');
  EXPECT_EQ(raisedBy([&] { list->save(); }), oacSaveReadOnlyLibDefList);
  EXPECT_EQ(oaLibDefList::get(path("work/../t.defs").c_str(), 'a'), list);
  EXPECT_EQ(list->getMode(), 'a');
  EXPECT_EQ(membersOf(list), "a");
  EXPECT_EQ(oaLibDefList::get(path("t.defs").c_str(), 'w'), list);
  EXPECT_TRUE(list->getMembers().isEmpty());
  EXPECT_EQ(readFile(path("t.defs")), "DEFINE a a\n") << "nothing is written before save()";
  list->save();
  EXPECT_EQ(readFile(path("t.defs")), "");

  oaLibDefList *nowhere = oaLibDefList::get(path("none/t.defs").c_str(), 'w');
  EXPECT_EQ(raisedBy([&] { nowhere->save(); }), oacLibDefListDirNotWritable);
}

TEST_F(LibDefs, UnreadableContentsAreNeverWrittenOver) {
  writeFile(path("t.defs"), "this is something else\n");
  std::string message;
  EXPECT_EQ(raisedBy([&] { oaLibDefList::get(path("t.defs").c_str(), 'a'); }, &message), oacLibDefListFileNotReadable);
  EXPECT_THAT(message, testing::HasSubstr("t.defs line 1"));
  EXPECT_EQ(oaLibDefList::find(path("t.defs").c_str()), nullptr);
}

TEST_F(LibDefs, SaveKeepsCommentsAndUntouchedLines) {
  writeFile(path("t.defs"), "# our libraries\n"
                            "define a a # the first\n"
                            "\n"
                            "DEFINE b b\n"
                            "ASSIGN b libMode readOnly\n"
                            "# the end\n");
  oaLibDefList *list = oaLibDefList::get(path("t.defs").c_str(), 'a');
  oaDMAttrArray attributes;
  attributes.append(oaDMAttr("VCSystem", "none at all"));
  oaLibDef::create(list, named("my-lib"), "/p/my lib", "/w", oacNonSharedLibMode, &attributes,
                   oaLibDef::find(list, named("b")));
  oaLibDefListRef::create(list, "more.defs");
  list->save();
  EXPECT_EQ(readFile(path("t.defs")), "# our libraries\n"
                                      "define a a # the first\n"
                                      "\n"
                                      "DEFINE my#2dlib /p/my lib\n"
                                      "ASSIGN my#2dlib writePath /w\n"
                                      "ASSIGN my#2dlib libMode nonShared\n"
                                      "ASSIGN my#2dlib VCSystem none at all\n"
                                      "DEFINE b b\n"
                                      "ASSIGN b libMode readOnly\n"
                                      "# the end\n"
                                      "INCLUDE more.defs\n");
  oaLibDef::find(list, named("a"))->destroy();
  oaLibDef::find(list, named("b"))->setLibMode(oacSharedLibMode);
  oaLibDef::find(list, named("b"))->moveToLast();
  EXPECT_EQ(membersOf(list), "my-lib more.defs b");
  list->save();
  list->destroy();
  list = oaLibDefList::get(path("t.defs").c_str(), 'r');
  EXPECT_EQ(membersOf(list), "my-lib more.defs b");
  oaLibDef *definition = oaLibDef::find(list, named("my-lib"));
  oaString value;
  definition->getLibPath(value);
  EXPECT_EQ(value, "/p/my lib");
  definition->getLibWritePath(value);
  EXPECT_EQ(value, "/w");
  EXPECT_EQ(definition->getLibMode(), oacNonSharedLibMode);
  definition->getLibAttributes(attributes);
  ASSERT_EQ(attributes.getNumElements(), 1u);
  EXPECT_EQ(attributes[0].getValue(), "none at all");
  EXPECT_EQ(oaLibDef::find(list, named("b"))->getLibMode(), oacSharedLibMode);
}

TEST_F(LibDefs, RefusesMembersThatCannotBeWritten) {
  oaLibDefList *list = oaLibDefList::create(path("t.defs").c_str());
  oaLibDefList *other = oaLibDefList::create(path("t2.defs").c_str());
  oaLibDef *elsewhere = oaLibDef::create(other, named("x"), "x");
  oaLibDef::create(list, named("a"), "a");
  oaLibDefListRef::create(list, "i.defs");
  EXPECT_EQ(raisedBy([&] { oaLibDef::create(list, named("a"), "b"); }), oacLibDefExists);
  EXPECT_EQ(raisedBy([&] { oaLibDefListRef::create(list, "i.defs"); }), oacLibDefListRefExists);
  EXPECT_EQ(raisedBy([&] { oaLibDef::create(list, named("b"), "b", "", oacSharedLibMode, nullptr, elsewhere); }),
            oacInvalidLibDefListMemCreate);
  for (const char *bad : {"", "p\nDEFINE evil /", " p", "p # q"}) {
    SCOPED_TRACE(bad);
    EXPECT_EQ(raisedBy([&] { oaLibDef::create(list, named("b"), bad); }), oacInvalidLibDefListMemCreate);
  }
  EXPECT_EQ(membersOf(list), "a i.defs");
}

TEST_F(LibDefs, MembersMayGoDuringAWalk) {
  oaLibDefList *list = oaLibDefList::create(path("t.defs").c_str());
  for (const char *lib : {"a", "b", "c", "d"}) {
    oaLibDef::create(list, named(lib), lib);
  }
  int met = 0;
  oaIter<oaLibDefListMem> members(list->getMembers());
  while (oaLibDefListMem *member = members.getNext()) {
    if (++met % 2 == 1) {
      member->destroy();
    }
  }
  EXPECT_EQ(met, 4);
  EXPECT_EQ(membersOf(list), "b d");
}

// Two programs that each add a library must not undo each other's work.
TEST_F(LibDefs, SaveKeepsWhatAnotherProcessAdded) {
  writeFile(path("t.defs"), "DEFINE a a\nDEFINE old old\n");
  oaLibDefList *list = oaLibDefList::get(path("t.defs").c_str(), 'a');
  writeFile(path("t.defs"), "DEFINE a a\nDEFINE old old\nDEFINE theirs t\nASSIGN theirs libMode readOnly\n");
  oaLibDef::find(list, named("old"))->destroy();
  oaLibDef::create(list, named("ours"), "o");
  list->save();
  EXPECT_EQ(readFile(path("t.defs")), "DEFINE a a\nDEFINE ours o\nDEFINE theirs t\nASSIGN theirs libMode readOnly\n");
  // A link that leads to no file yet stays one.
  std::filesystem::create_symlink("there.defs", path("link.defs"));
  oaLibDefList::get(path("link.defs").c_str(), 'w')->save();
  EXPECT_TRUE(std::filesystem::is_symlink(path("link.defs")));
  EXPECT_EQ(readFile(path("there.defs")), "");
  EXPECT_TRUE(std::filesystem::exists(path("there.defs")));
  // Whoever makes a file writes over nothing that was not there; whoever overwrites one does.
  oaLibDefList *made = oaLibDefList::get(path("made.defs").c_str(), 'w');
  writeFile(path("made.defs"), "DEFINE theirs t\n");
  made->save();
  EXPECT_EQ(readFile(path("made.defs")), "DEFINE theirs t\n");
  oaLibDefList::get(path("made.defs").c_str(), 'w')->save();
  EXPECT_EQ(readFile(path("made.defs")), "");
}

// Also when there is no file yet, and when one adds again to what it has saved.
TEST_F(LibDefs, ProcessesThatAddAtTheSameTimeLoseNothing) {
  constexpr int kProcesses = 6;
  int start[2];
  ASSERT_EQ(::pipe(start), 0);
  const auto add = [&](int process) {
    char byte;
    (void)!::read(start[0], &byte, 1);
    oaLibDefList *list = oaLibDefList::get(path("t.defs").c_str(), 'a');
    for (int i = 0; i <= process % 2; ++i) {
      oaLibDef::create(list, named("p" + std::to_string(process) + "_" + std::to_string(i)), "x");
      // On a slow disk the others may take longer than a save waits.
      while (raisedBy([&] { list->save(); }) == oacLibDefListFileNotWritable) {
      }
    }
  };
  std::vector<pid_t> processes(kProcesses);
  for (int process = 0; process < kProcesses; ++process) {
    processes[process] = ::fork();
    if (processes[process] == 0) {
      ::close(start[1]);
      ::_exit(raisedBy([&] { add(process); }) == kNothingRaised ? 0 : 1);
    }
  }
  ::close(start[0]);
  ::close(start[1]);
  for (const pid_t process : processes) {
    int status = 0;
    EXPECT_EQ(::waitpid(process, &status, 0), process);
    EXPECT_EQ(status, 0);
  }
  const oaLibDefList *list = oaLibDefList::get(path("t.defs").c_str(), 'r');
  EXPECT_EQ(list->getMembers().getCount(), unsigned(kProcesses + kProcesses / 2)) << readFile(path("t.defs"));
}

} // namespace
