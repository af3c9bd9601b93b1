// The fixture of tests of single classes, which are part of the test program, over the fake
// platform. If they took a lock, it would not appear in the journal.
#ifndef OBJECT_TEST_H
#define OBJECT_TEST_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fake_platform.h"
#include "language.h"
#include "ventaro/data_provider.h"

using namespace fake_platform;  // NOLINT(google-build-using-namespace): the tests' vocabulary

class ObjectTest : public testing::Test {
 protected:
  void SetUp() override {
    reset();
    useLanguage("en");
    bindCatalogues();
    clearJournal();
  }

  void TearDown() override { EXPECT_EQ(logMistakes(), std::vector<std::string>()); }
};

#endif  // OBJECT_TEST_H
