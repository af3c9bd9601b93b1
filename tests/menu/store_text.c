/* Stores what it reads as the text of a key, of any length that the store takes. */
#include <stdio.h>
#include <stdlib.h>

#include "platform/config_store.h"

int main(int argc, char** argv) {
  const size_t most = (size_t)8 << 20;
  char* text = calloc(most + 1, 1);
  if (argc != 2 || text == NULL || fread(text, 1, most, stdin) == most) return 2;
  const int result = vconf_set_str(argv[1], text);
  free(text);
  return result == 0 ? 0 : 1;
}
