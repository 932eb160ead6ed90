// GNUstep's headers include this; Debian's gcc does not have it.
#include <Block.h>
