/* A host in plain C, which knows of the library a file name and one function. */
#include <dlfcn.h>
#include <stdio.h>

int main(void) {
    void* library = dlopen("libvxswf.so", RTLD_NOW);
    if (library == NULL) {
        fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    void* (*get)(void) = NULL;
    *(void**)&get = dlsym(library, "GetSwfParserComponent");
    if (get == NULL || get() == NULL || get() != get()) {
        fprintf(stderr, "no component\n");
        return 1;
    }
    return 0;
}
