#include <unistd.h>
