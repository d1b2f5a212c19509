#include <unistd.h>

// macOS has no such function.
int makePipe(int ends[2])
{
    return pipe2(ends, 0);
}
