#include "base/Ordem.h"
