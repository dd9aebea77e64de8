/* velumo: a small form-based GUI library on SDL 1.2, SDL_ttf 2.0 and SDL_image 1.2.
 * The one public header: records, type codes and every exported function. */
#ifndef VELUMO_H
#define VELUMO_H

#include <SDL.h>
#include <SDL_ttf.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ------------------------------------------------------------------------
 * Conventions
 *
 * All state lives in one caller-owned vel_context, zero-filled before
 * vel_start_velumo.  Objects, texts and windows are referenced by uint32_t
 * numbers into the tables the context points to; 0 always means "none".
 * Objects 1 to 7 are the frame buttons of the active window.  Coordinates
 * are absolute screen pixels.  Diagnostics are plain lines on standard
 * output; functions do not report failure through their results unless
 * their comment says so.
 * ------------------------------------------------------------------------ */

/* Object type codes (vel_object.type). */
enum {
    VEL_TYPE_EMPTY = 0,         /* empty record, not drawn by the scene passes */
    VEL_TYPE_WINDOW = 1,        /* window: frame, optional text, dependents */
    VEL_TYPE_LABEL = 2,         /* one-line caption or button showing `label` */
    VEL_TYPE_TEXT = 3,          /* multi-line text object formatted from its text record */
    VEL_TYPE_PICTURE_FILE = 4,  /* picture not (yet) loaded; only its border is drawn */
    VEL_TYPE_ENTRY = 5,         /* one-line text entry field */
    VEL_TYPE_NUMERIC_ENTRY = 6, /* one-line entry field taking digits only */
    VEL_TYPE_MENU = 7,          /* pull-down menu */
    VEL_TYPE_CHAIN = 8,         /* member (or head) of a chain of linked text objects */
    VEL_TYPE_PICTURE = 9        /* loaded picture: `image` holds the surface */
};

/* Window kinds (vel_object.window_kind of a type-1 object). */
enum {
    VEL_WINDOW_FULL_FRAME = 0,   /* all seven frame buttons above the window */
    VEL_WINDOW_REDUCED_FRAME = 1 /* frame buttons 1 and 7 only */
};

/* Text limits shared by formatting, painting and editing. */
enum {
    VEL_MAX_LINES = 40,           /* formatted lines per object */
    VEL_LINE_BYTES = 100,         /* bytes per formatted line, NUL included */
    VEL_LINE_BUFFER_BYTES = 4000, /* one line buffer: 40 lines of 100 bytes */
    VEL_TEXT_BYTES = 1000,        /* text of one text record, NUL included */
    VEL_STRING_BYTES = 68,        /* label, font path and picture path fields */
    VEL_MAX_DEPENDENTS = 100,     /* entries of dep_objs */
    VEL_WINDOW_STACK_SIZE = 100,  /* entries of window_stack */
    VEL_DIR_ENTRIES = 100,        /* entries of the file selector's listing */
    VEL_DIR_NAME_BYTES = 65,      /* one directory name, NUL included */
    VEL_FRAME_BUTTONS = 7,        /* objects 1..7 are the frame buttons */
    VEL_APP_FIELDS = 16           /* uint32_t words in each application space */
};

/* Colour triple of the context: red, green, blue. */
typedef struct vel_rgb {
    uint8_t r, g, b;
} vel_rgb;

/* One text record, in memory exactly as in the text file (1008 bytes). */
typedef struct vel_text_rec {
    uint32_t reserved;     /* first word: copied, never interpreted */
    uint32_t cursor_index; /* character index of the text cursor in `text` */
    char text[1000];       /* NUL-terminated; byte 10 ends a paragraph */
} vel_text_rec;

/* One record of the form description file (776 bytes, little-endian).
 * Record k of the file becomes object k + 1.  The reserved words stand
 * where the object record keeps run-time state and are ignored on reading. */
typedef struct vel_object_file_rec {
    uint32_t x, y, width, height;          /* offset 0 */
    uint32_t fill_r, fill_g, fill_b;       /* 16 */
    char label[68];                        /* 28 */
    uint32_t font_choice;                  /* 96 */
    uint32_t font_size;                    /* 100 */
    char font_path[68];                    /* 104 */
    uint32_t text_index;                   /* 172 */
    uint32_t text_r, text_g, text_b;       /* 176 */
    uint32_t margin_left, margin_right;    /* 188 */
    uint32_t margin_top, margin_bottom;    /* 196 */
    uint32_t centred;                      /* 204 */
    uint32_t line_width;                   /* 208 */
    uint32_t line_spacing;                 /* 212 */
    uint32_t reserved_number_of_lines;     /* 216 */
    uint32_t reserved_220;                 /* 220 */
    uint32_t hidden;                       /* 224 */
    uint32_t type;                         /* 228 */
    uint32_t window_kind;                  /* 232 */
    uint32_t editable;                     /* 236 */
    uint32_t reserved_cursor_x;            /* 240 */
    uint32_t reserved_cursor_y;            /* 244 */
    uint32_t text_length;                  /* 248 */
    uint32_t reserved_cursor_line;         /* 252 */
    uint32_t reserved_cursor_column;       /* 256 */
    uint32_t max_chars;                    /* 260 */
    uint32_t border_style;                 /* 264 */
    uint32_t border_inset;                 /* 268 */
    uint32_t border_r, border_g, border_b; /* 272 */
    uint32_t master;                       /* 284 */
    uint32_t dep_objs[100];                /* 288 */
    uint32_t reserved_scroll_x;            /* 688 */
    uint32_t reserved_scroll_y;            /* 692 */
    uint32_t scroll_max_x;                 /* 696 */
    uint32_t scroll_max_y;                 /* 700 */
    char image_path[68];                   /* 704 */
    uint32_t clip_mode;                    /* 772 */
} vel_object_file_rec;

/* One entry of the object table.  Fields marked "run time" start at 0 and
 * are never read from the form file. */
typedef struct vel_object {
    uint32_t x, y;                   /* top left corner, absolute screen pixels */
    uint32_t width, height;          /* 0 in either: not drawn, not hit, not walked */
    uint32_t fill_r, fill_g, fill_b; /* body colour, low byte used */
    char label[68];                  /* caption of one-line objects (types 2, 5, 6) */
    uint32_t font_choice;            /* 0 context font, 1 own_font, other: no text */
    uint32_t font_size;              /* point size for own_font */
    char font_path[68];              /* TrueType file for own_font */
    TTF_Font *own_font;              /* run time: opened at start-up for font_choice 1 */
    uint32_t text_index;             /* text record and line buffer number, 0 none */
    uint32_t text_r, text_g, text_b; /* text and cursor colour */
    uint32_t margin_left, margin_right, margin_top, margin_bottom;
    uint32_t centred;            /* 1: a kind-1 window centres its text line */
    uint32_t line_width;         /* widest formatted line; 0 computed on first use */
    uint32_t line_spacing;       /* extra pixels between lines */
    uint32_t number_of_lines;    /* run time: index of the last formatted line */
    uint32_t reserved;           /* not used */
    uint32_t hidden;             /* nonzero: not drawn, not hit */
    uint32_t type;               /* VEL_TYPE_* */
    uint32_t window_kind;        /* VEL_WINDOW_* for windows */
    uint32_t editable;           /* 1: may hold the text cursor */
    uint32_t cursor_x, cursor_y; /* run time: pixel position of the text cursor */
    uint32_t text_length;        /* characters of the label or the text record */
    uint32_t cursor_line;        /* run time: formatted line holding the cursor */
    uint32_t cursor_column;      /* run time: column of the cursor in that line */
    uint32_t max_chars;          /* character limit of entry fields */
    uint32_t border_style;       /* 0..5 */
    uint32_t border_inset;       /* border offset from the inner area */
    uint32_t border_r, border_g, border_b;
    uint32_t master;             /* master object, 0 top level */
    uint32_t dep_objs[100];      /* dependents, the list ends at the first 0 */
    uint32_t scroll_x, scroll_y; /* run time: scroll offset of the contents */
    uint32_t scroll_max_x;       /* horizontal scroll range, 0 five screen widths */
    uint32_t scroll_max_y;       /* vertical scroll range, 0 five screen heights */
    char image_path[68];         /* picture file of a type-4 object */
    SDL_Surface *image;          /* run time: picture of a type-9 object */
    uint32_t clip_mode;          /* 0 master's margins, 1 master's frame, other none */
    char *stream;                /* run time: external text of a chain head */
} vel_object;

/* The one state record.  The application zero-fills it, sets the display
 * fields and hands it to every function.  The two application spaces
 * (app_fields_a, app_fields_b, VEL_APP_FIELDS words each) are never read
 * or written by the library. */
typedef struct vel_context {
    SDL_Event event;           /* event last fetched by the input loops */
    TTF_Font *font;            /* default font (font_choice 0) */
    SDL_Surface *screen;       /* display surface; all drawing goes here */
    SDL_Surface *text_surface; /* the text line rendered last */
    SDL_Rect screen_rect;      /* rectangle of full refreshes, clip of top-level borders */
    vel_rgb background_colour;
    vel_rgb mark_colour; /* selection marks, copied from set A or B */
    vel_rgb mark_colour_a;
    vel_rgb mark_colour_b;
    uint32_t screen_width, screen_height;
    uint32_t frame_mode;    /* 0 resize, 1 scroll, other: mode buttons off */
    uint32_t scroll_step;   /* pixels per press of a scroll button */
    uint32_t key_code;      /* key last pressed, 0 none pending */
    uint32_t final_key;     /* key handed to the editor at key release */
    uint32_t key_printable; /* 1: key_code is a character to insert */
    uint32_t active_window;
    uint32_t reserved;                     /* not used by the library */
    uint32_t object_count;                 /* objects loaded from the form file */
    uint32_t text_count;                   /* text records loaded from the text file */
    uint32_t window_to_activate;           /* target of the next activation or closing */
    uint32_t umlaut_conversion;            /* 1: 0x84, 0x94, 0x81 become 0xE4, 0xF6, 0xFC */
    uint32_t cursor_object;                /* object receiving typed text, 0 none */
    uint32_t insert_mode;                  /* 0 insert, 1 overwrite */
    uint32_t texts_loaded;                 /* 1: vel_close frees text records and line buffers */
    uint32_t app_fields_a[VEL_APP_FIELDS]; /* application space */
    uint32_t dir_last;                     /* index of the last entry of dir_names */
    uint32_t app_fields_b[VEL_APP_FIELDS]; /* application space */
    char dir_names[100][65];               /* directory entries, NUL-terminated */
    uint32_t dir_order[100];               /* indexes into dir_names in display order */
    uint32_t window_stack[100];            /* open windows, entry 0 in front */
    uint32_t window_count;
    vel_text_rec *text_recs; /* text records, index 0 unused */
    char *text_bufs;         /* line buffers: buffer t at byte 4000 t, line n 100 n further */
    vel_object *objects;     /* object table, index 0 unused */
    vel_object_file_rec *file_recs; /* form file copy, only during start-up */
} vel_context;

/* ========================================================================
 * Start-up and shutdown
 * ======================================================================== */

/* Loads the form description file and, when any loaded object has a text,
 * the text file; opens the objects' pictures and fonts; copies mark_colour_a
 * (frame_mode 0) or mark_colour_b (frame_mode 1) into mark_colour.
 * Writes object_count, objects, text_count, text_recs, text_bufs and
 * mark_colour.  Room is made for extra_objs and extra_texts spare records,
 * zeroed, behind the loaded ones.  A form file that cannot be opened with
 * mode "r+b" prints "Can't open file." and ends the process with status 0;
 * a needed text file that cannot be opened prints "Can't open file !" and a
 * blank line and ends the process with status 0.  Use vel_load_form to get
 * an error result instead.
 * Loading rules: record k of the form file becomes object k + 1; `hidden`
 * is taken only for nonzero types that are top level or menus; dep_objs
 * only when the first entry is nonzero; trailing bytes short of a whole
 * record are ignored.  A string without a NUL inside its field is cut at 67
 * characters, a text without a NUL in its 1000 bytes at 999.  One spare line
 * buffer, zeroed, lies behind the block so that the step from a last
 * buffer's line 39 into "line 40" stays inside the allocation. */
void vel_start_velumo(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path);

/* vel_start_velumo without ending the process: returns 1 when loaded,
 * -1 when a needed file could not be opened (after printing the same
 * message).  On -1 nothing is left allocated. */
int32_t vel_load_form(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path);

/* Loads the picture of every type-4 object from `first` (0 stands for 1)
 * to object_count with IMG_Load.  A loaded picture sets `image`, replaces
 * width and height by the picture's size and turns the type into 9.
 * Returns 0 when no picture was tried, else the result of the last one
 * tried: 1 loaded, -1 failed (earlier failures are not reported). */
int32_t vel_load_object_images(vel_context *ctx, uint32_t first);

/* Opens own_font for every object with font_choice 1 from `first` (0
 * stands for 1) to object_count.  A failure prints "TTF_OpenFont: <SDL
 * error>" and leaves own_font null.  Returns 0 when no font was tried, else
 * the result of the last one: 1 opened, -1 failed. */
int32_t vel_load_object_fonts(vel_context *ctx, uint32_t first);

/* Closes the context font, frees text_surface and screen, closes the own
 * fonts and frees the pictures of the loaded objects 1..object_count, frees
 * text records and line buffers when texts_loaded is 1, frees the object
 * table, then quits SDL_ttf and SDL.  Every pointer it frees is set to null,
 * so nothing is freed twice; with texts_loaded 0 the text memory stays
 * allocated (and its pointers stay set). */
void vel_close(vel_context *ctx);

/* ========================================================================
 * String and number helpers (no context)
 * ======================================================================== */

/* Compares up to n + 1 characters.  Returns 0 when nothing was compared
 * (n = 0 counts), else the verdict of the LAST compared position only: 1
 * equal, 2 different; an earlier difference is forgotten.  When i stops
 * below n because a string ended: 2 if a goes on, 1 if b ended too, else 2. */
uint32_t vel_strcmp(const char *a, const char *b, uint32_t n);

/* Number of characters before the NUL. */
uint32_t vel_count_string_size_without_zero(const char *s);

/* Number of characters before the NUL (same as the function above). */
uint32_t vel_get_lastposition(const char *s);

/* Index of the last character: length - 1, 0xFFFFFFFF for "". */
uint32_t vel_get_lastposition_before_zero(const char *s);

/* Copies at most n + 1 characters of src (n = 0 copies one) and a NUL. */
void vel_copy_st_first_part(uint32_t n, const char *src, char *dst);

/* Copies the first byte unconditionally, then bytes while the next one is
 * nonzero, then a NUL; returns the bytes copied.  An empty source copies
 * its terminator only and returns 1 (it never reads past the NUL). */
uint32_t vel_copy_st_last_part(const char *src, char *dst);

/* Stores the character of digit d (0..9) in dst[0] and returns 1; any
 * other d stores '0' and returns -1.  No terminator is written. */
int32_t vel_transform_int_to_asccii(int32_t digit, char *dst);

/* Stores the value of the digit character *c in *dst and returns 1; any
 * other character stores 0 and returns -1.  Note the (destination, source)
 * order, the reverse of vel_transform_int_to_asccii. */
int32_t vel_transform_ascii_to_int(uint32_t *dst, const char *c);

/* Reads at most nine decimal digits: a string whose first ten bytes hold no
 * NUL is cut to its first nine characters.  Non-digits count as 0 ("12a4"
 * is 1204).  An empty string stores 0. */
void vel_transform_str_to_num(const char *s, uint32_t *out);

/* Writes *value in decimal with a NUL and returns the digit count.  The
 * count is taken in single precision, so values whose float image rounds
 * up to a power of ten get one digit more (99999999 becomes "999999999");
 * values from 2^31 up write only the NUL at dst[10] and return 10.  dst
 * needs 11 bytes. */
int32_t vel_transform_num_to_str(const uint32_t *value, char *dst);

/* 10 to the power e, wrapping in 32 bits, except that e = 0 also gives 10. */
uint32_t vel_zehnerpotenz(uint32_t e);

/* ========================================================================
 * Rendering: primitives, geometry and clipping, object painting, borders
 * ======================================================================== */

/* Lock and unlock a surface when SDL requires it (hardware, asynchronous
 * blit or RLE surfaces, or a nonzero offset). */
void vel_lock(SDL_Surface *surface);
void vel_unlock(SDL_Surface *surface);

void vel_draw_pixel(vel_context *ctx, uint32_t x, uint32_t y, uint8_t r, uint8_t g, uint8_t b);
void vel_draw_line(vel_context *ctx, uint32_t x1, uint32_t y1, uint32_t x2, uint32_t y2, uint8_t r,
                   uint8_t g, uint8_t b);
void vel_draw_box(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                  uint8_t g, uint8_t b);
void vel_draw_rectangle(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h,
                        uint8_t r, uint8_t g, uint8_t b);

uint32_t vel_p_cutted_w_independent(vel_context *ctx, uint32_t obj);
uint32_t vel_p_cutted_h_independent(vel_context *ctx, uint32_t obj);
uint32_t vel_p_cutted_w_dependent(vel_context *ctx, uint32_t obj);
uint32_t vel_p_cutted_h_dependent(vel_context *ctx, uint32_t obj);
uint32_t vel_search_master(vel_context *ctx, uint32_t obj);
void vel_get_borders_for_dep_object(vel_context *ctx, uint32_t obj, uint32_t *left,
                                    uint32_t *right, uint32_t *top, uint32_t *bottom);
void vel_get_borders_for_text(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                              uint32_t *top, uint32_t *bottom);

void vel_evoke_object(vel_context *ctx, uint32_t obj);
void vel_evoke_borders(vel_context *ctx, uint32_t obj);

/* ========================================================================
 * Text layout: formatting, chained flow, loading and reset
 * ======================================================================== */

uint32_t vel_format_object_text(vel_context *ctx, uint32_t obj);
int32_t vel_copy_word_into_line(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                                uint32_t *column, uint32_t *word_length, uint32_t break_after);
uint32_t vel_check_line_volume(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                               uint32_t *column, uint32_t *word_length);
uint32_t vel_format_small_obj(vel_context *ctx, uint32_t obj);

uint32_t vel_format_stream_to_linked_objects(vel_context *ctx, uint32_t master);
int32_t vel_copy_word_big(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                          uint32_t *text_index, const char *word, uint32_t *line,
                          uint32_t *column, uint32_t *word_length, uint32_t break_after);
int32_t vel_go_to_next_chainmember(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                                   uint32_t *member, uint32_t *text_index, uint32_t *line,
                                   uint32_t *column);

uint32_t vel_load_window_text(vel_context *ctx, uint32_t obj, const char *text);
uint32_t vel_load_window_text_buttons(vel_context *ctx, uint32_t obj, const char *text,
                                      uint32_t button_a, uint32_t button_b);
void vel_reset_textobject(vel_context *ctx, uint32_t mode, uint32_t obj);
uint32_t vel_fill_form_with_dummies(vel_context *ctx, const char *string, uint32_t obj,
                                    uint32_t field_length, char fill_char);
char *vel_read_external_stream(const char *path);

#ifdef __cplusplus
}
#endif

#endif /* VELUMO_H */
