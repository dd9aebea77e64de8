/* The public header compiles as C99 and its records are usable from C. */
#include "velumo.h"

#include <string.h>

int velumo_header_c99_probe(void)
{
    vel_context ctx;
    memset(&ctx, 0, sizeof ctx);
    ctx.frame_mode = 1;
    return (int)(sizeof(vel_object_file_rec) + sizeof(vel_text_rec)) + (int)ctx.frame_mode;
}
