// GNUstep's headers ask for this; Debian's gcc has it not.
#include <Block.h>
