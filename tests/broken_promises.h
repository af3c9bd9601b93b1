// How a test uses contract/: a promise that the provider breaks is a failure of the test.
#ifndef TESTS_BROKEN_PROMISES_H
#define TESTS_BROKEN_PROMISES_H

#include <gtest/gtest.h>

#include "contract/calls.h"

class FailsTheTest : public contract::Observer {
 public:
  void broken(const contract::Breach& breach) override {
    ADD_FAILURE() << contract::toString(breach);
  }
};

#endif  // TESTS_BROKEN_PROMISES_H
