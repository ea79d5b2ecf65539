#include "oaplugincore.h"

#include <cstring>

#include <dlfcn.h>
#include <elf.h>

#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ownprocess.h"

namespace {

const char kVerificationData[] = "pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.8.7\ndebug=false\n"
                                 "buildkey=x86_64 linux g++-4 full-config";

// The bytes of a named section of an ELF file; empty when there is none.
std::string sectionOf(const std::string &bytes, const char *name) {
  Elf64_Ehdr header;
  std::memcpy(&header, bytes.data(), sizeof header);
  const auto sectionAt = [&](size_t index) {
    Elf64_Shdr section;
    std::memcpy(&section, bytes.data() + header.e_shoff + index * sizeof section, sizeof section);
    return section;
  };
  const Elf64_Shdr names = sectionAt(header.e_shstrndx);
  for (size_t i = 0; i < header.e_shnum; ++i) {
    const Elf64_Shdr section = sectionAt(i);
    if (std::strcmp(bytes.data() + names.sh_offset + section.sh_name, name) == 0) {
      return bytes.substr(section.sh_offset, section.sh_size);
    }
  }
  return "";
}

// A copy of the built plug-in cut to its first half, and files that are no plug-in at all.
TEST(Loading, WhatIsNoPlugInIsRefusedWithAReason) {
  const ScratchFolder folder;
  const std::string plugIn = readFile(PLUGIN_FILE);
  writeFile(folder.path() / "libcut.so", plugIn.substr(0, plugIn.size() / 2));
  writeFile(folder.path() / "libempty.so", "");
  writeFile(folder.path() / "libtext.so", "this is no library");
  for (const char *name : {"libcut.so", "libempty.so", "libtext.so", "libmissing.so"}) {
    SCOPED_TRACE(name);
    QPluginLoader loader(QString::fromStdString((folder.path() / name).string()));
    EXPECT_EQ(loader.instance(), nullptr);
    EXPECT_FALSE(loader.errorString().isEmpty());
  }
}

TEST(Loading, HostCastsTheObjectToTheInterface) {
  QPluginLoader loader(PLUGIN_FILE);
  EXPECT_EQ(loader.metaData().value("IID").toString(), QString(OAPLUGIN_INTERFACE_ID));
  QObject *object = loader.instance();
  ASSERT_NE(object, nullptr) << loader.errorString().toStdString();
  EXPECT_EQ(object->parent(), nullptr);
  EXPECT_STREQ(object->metaObject()->className(), "oaPlugInMain");
  EXPECT_NE(qobject_cast<oaPlugInCore *>(object), nullptr);
}

TEST(Loading, PlugInFindsTheKitBesideIt) {
  const ScratchFolder folder;
  EXPECT_TRUE(inOwnProcess(folder, [&] {
    QPluginLoader loader(PLUGIN_FILE);
    auto *plugIn = qobject_cast<oaPlugInCore *>(loader.instance());
    ASSERT_NE(plugIn, nullptr) << loader.errorString().toStdString();
    EXPECT_EQ(printedBy([&] { plugIn->init(false); }), "");
    EXPECT_EQ(plugIn->getLibDefsFilename().toStdString(), (folder.home() / "lib.defs").string());
  }));
}

TEST(EntryPoints, AreExportedAndNothingOfThePlugInElse) {
  void *library = dlopen(PLUGIN_FILE, RTLD_LAZY);
  ASSERT_NE(library, nullptr) << dlerror();
  EXPECT_NE(dlsym(library, "qt_plugin_instance"), nullptr);
  EXPECT_NE(dlsym(library, "qt_plugin_query_verification_data"), nullptr);
  EXPECT_EQ(dlsym(library, "_ZN9oaConvert4initEv"), nullptr);
  EXPECT_EQ(dlsym(library, "_ZN12oaPlugInMain9saveCloseEv"), nullptr);
  EXPECT_EQ(dlsym(library, "_ZTV12oaPlugInMain"), nullptr);
}

TEST(EntryPoints, VerificationDataStandInTheirOwnSection) {
  void *library = dlopen(PLUGIN_FILE, RTLD_LAZY);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto query = reinterpret_cast<const char *(*)()>(dlsym(library, "qt_plugin_query_verification_data"));
  ASSERT_NE(query, nullptr);
  EXPECT_STREQ(query(), kVerificationData);
  EXPECT_EQ(sectionOf(readFile(PLUGIN_FILE), ".qtplugin"), std::string(kVerificationData, sizeof kVerificationData));
}

TEST(EntryPoints, InstanceIsOneUntilTheHostDeletesIt) {
  void *library = dlopen(PLUGIN_FILE, RTLD_LAZY);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto instance = reinterpret_cast<QObject *(*)()>(dlsym(library, "qt_plugin_instance"));
  ASSERT_NE(instance, nullptr);
  const QPointer<QObject> first = instance();
  ASSERT_FALSE(first.isNull());
  EXPECT_EQ(instance(), first.data());
  delete first.data();
  const QPointer<QObject> second = instance();
  ASSERT_FALSE(second.isNull());
  EXPECT_NE(qobject_cast<oaPlugInCore *>(second.data()), nullptr);
  EXPECT_EQ(instance(), second.data());
  delete second.data();
}

} // namespace
