// The measurements, each with its command-line arguments; wrong ones raise exceptions.
#ifndef BENCH_STORE_PROGRAMS_H
#define BENCH_STORE_PROGRAMS_H

#include "store.h"

namespace bench {

Json::Value operations(int count, char** words);
Json::Value readers(int count, char** words);
Json::Value notification(int count, char** words);

}  // namespace bench

#endif  // BENCH_STORE_PROGRAMS_H
