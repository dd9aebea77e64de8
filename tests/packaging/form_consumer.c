/* A consumer of velumo_add_form: loads the form compiled at build time
 * through the generated definitions and checks the generated numbers. */
#include "hello.h"
#include "velumo.h"

#include <stdio.h>
#include <string.h>

int main(void)
{
    static vel_context ctx;
    if (vel_load_form(&ctx, 0, 0, HELLO_FORM_FILE, HELLO_TEXT_FILE) != 1) return 1;
    if (ctx.object_count != HELLO_OBJECT_COUNT || ctx.text_count != HELLO_TEXT_COUNT) return 2;
    if (strcmp(ctx.objects[HELLO_OK].label, "OK") != 0) return 3;
    if (ctx.objects[HELLO_OK].master != HELLO_MAIN) return 4;
    if (strcmp(ctx.text_recs[HELLO_TEXT_GREETING].text, "Hello") != 0) return 5;
    puts("velumo form consumer: ok");
    return 0;
}
