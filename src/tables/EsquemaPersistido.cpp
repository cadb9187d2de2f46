#include "tables/Tabla.h"
