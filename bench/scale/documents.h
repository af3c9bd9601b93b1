// The document of the saved networks, of any length.
#ifndef BENCH_SCALE_DOCUMENTS_H
#define BENCH_SCALE_DOCUMENTS_H

#include <string>

inline constexpr char kFirstNetwork[] = "menu/network/SavedAP1";
inline constexpr char kDocumentKey[] = "db/menu/network/TopSavedAP";

// As the network service publishes it: so many networks, connected to the first.
std::string document(int entries);

#endif  // BENCH_SCALE_DOCUMENTS_H
