/* A tiny application built against an installed velumo. */
#include <velumo.h>

#include <stdio.h>
#include <string.h>

int main(void)
{
    static vel_context ctx;
    char digits[11];
    uint32_t value = 4711;
    memset(&ctx, 0, sizeof ctx);
    if (vel_load_form(&ctx, 0, 0, "/nonexistent/form.vel", "/nonexistent/texts.vel") != -1) return 1;
    if (vel_transform_num_to_str(&value, digits) != 4 || strcmp(digits, "4711") != 0) return 2;
    if (sizeof(vel_object_file_rec) != 776 || sizeof(vel_text_rec) != 1008) return 3;
    puts("consumer ok");
    return 0;
}
