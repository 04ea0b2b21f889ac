#include "engine/FileAccess.h"
