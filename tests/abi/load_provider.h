/* What a framework in C needs to load a provider. */
#ifndef LOAD_PROVIDER_H
#define LOAD_PROVIDER_H

/* Ends the program with a message when the condition does not hold. */
#define CHECK(condition) check_that((condition) ? 1 : 0, #condition, __LINE__)
void check_that(int holds, const char* condition, int line);

/* A function by its name, to be cast to its type; ends the program when there is none. */
typedef void (*any_function)(void);
any_function function_of(void* library, const char* name);

/* Loads the provider that the program's only argument names. */
void* load_provider(int argc, char** argv);

#endif /* LOAD_PROVIDER_H */
