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
 *
 * Robustness: every object number read from the tables or from the context
 * (master, dep_objs entries, active_window, window_to_activate,
 * cursor_object, window_stack entries, chain members, file selector rows)
 * that lies outside the object table counts as 0, "none"; a text_index
 * outside the text records means "no text".  The loader keeps the sizes of
 * its tables, spare records included, in their unused record 0 (see
 * vel_object.reserved and vel_text_rec.reserved).  A table that the
 * application allocates itself may leave record 0 zeroed: it then counts as
 * object_count + 1 object records (objects 1..object_count) and text_count +
 * 1 text records; give such text tables text_count + 2 line buffers, the
 * last one zeroed, as the loader does (formatting may step from line 39 of
 * the last buffer into the next).  Counts in the context never reach
 * past their arrays (window_count 100, dir_last 99, object_count the
 * table).  Walks up master chains stop after as many steps as the table
 * has records (only a cycle is that long); walks over dependents visit at
 * most that many entries in all and skip an entry naming an object whose
 * dependents they are already walking, so cycles and objects listed many
 * times end quickly.  Walks over dependents (drawing, hit testing, moving,
 * scrolling, cursor search) descend at most VEL_MAX_NESTING levels below
 * the object they start from: dependents nested deeper are left out, so
 * no tree overflows the stack.  Walks up master chains take no stack.
 * Pixels outside the display surface are never written.
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

/* Window kinds (vel_object.window_kind of a type-1 object); other kinds
 * show no frame buttons. */
enum {
    VEL_WINDOW_FULL_FRAME = 0,   /* all seven frame buttons above the window */
    VEL_WINDOW_REDUCED_FRAME = 1 /* frame buttons 1 and 7 only */
};

/* Border styles (vel_object.border_style): the lines vel_evoke_borders
 * draws, and whether vel_switch_dep_object fits a dependent to its master's
 * inner area.  Other values draw nothing and fit nothing. */
enum {
    VEL_BORDER_NONE = 0,         /* no line */
    VEL_BORDER_FRAME = 1,        /* a frame border_inset + 1 pixels outside the inner area */
    VEL_BORDER_FITTED = 2,       /* no line; fitted, and never hit */
    VEL_BORDER_FITTED_FRAME = 3, /* a frame as VEL_BORDER_FRAME; fitted, and never hit */
    VEL_BORDER_SHADOW = 4,       /* the outline moved right and down by border_inset */
    VEL_BORDER_FITTED_SHADOW = 5 /* a shadow as VEL_BORDER_SHADOW; fitted */
};

/* Clip modes (vel_object.clip_mode): how a dependent is limited by its
 * masters.  Other values set no limit from the master's rectangle. */
enum {
    VEL_CLIP_MARGINS = 0, /* inside the master's margins */
    VEL_CLIP_FRAME = 1    /* the master's whole rectangle */
};

/* Frame modes (vel_context.frame_mode): what frame buttons 2, 3, 5 and 6 do
 * and which mark colour shows it.  Other values turn those buttons off. */
enum {
    VEL_FRAME_MODE_RESIZE = 0, /* resize the active window; mark_colour_a */
    VEL_FRAME_MODE_SCROLL = 1  /* scroll its contents; mark_colour_b */
};

/* Font choices (vel_object.font_choice).  Other values: no text is measured
 * or painted. */
enum {
    VEL_FONT_DEFAULT = 0, /* the context font */
    VEL_FONT_OWN = 1      /* own_font, opened from font_path at font_size */
};

/* Frame buttons: objects 1..7 above the active window. */
enum {
    VEL_FRAME_BUTTONS = 7,      /* objects 1..7 are the frame buttons */
    VEL_BUTTON_MOVE = 1,        /* moves the window to the next click */
    VEL_BUTTON_MODE = 4,        /* switches frame_mode */
    VEL_BUTTON_CLOSE = 7,       /* closes the window; ends every selection loop */
    VEL_FRAME_BUTTON_SIZE = 16, /* buttons are 16 x 16, side by side */
    VEL_FRAME_ROW_OFFSET = 24,  /* the row of buttons stands 24 pixels above the window */
    VEL_WINDOW_MIN_X = 11,      /* a top-level window stays at x >= 11 ... */
    VEL_WINDOW_MIN_Y = 25       /* ... and y >= 25, so its buttons stay on the screen */
};

/* Text limits shared by formatting, painting and editing. */
enum {
    VEL_MAX_LINES = 40,           /* formatted lines per object */
    VEL_LINE_BYTES = 100,         /* bytes per formatted line, NUL included */
    VEL_LINE_BUFFER_BYTES = 4000, /* one line buffer: 40 lines of 100 bytes */
    VEL_TEXT_BYTES = 1000,        /* text of one text record, NUL included */
    VEL_STRING_BYTES = 68,        /* label, font path and picture path fields */
    VEL_ENTRY_CHARS = 64,         /* characters an entry field takes */
    VEL_WORD_CHARS = 70,          /* longer runs of word characters are cut */
    VEL_MAX_DEPENDENTS = 100,     /* entries of dep_objs */
    VEL_WINDOW_STACK_SIZE = 100,  /* entries of window_stack */
    VEL_DIR_ENTRIES = 100,        /* entries of the file selector's listing */
    VEL_DIR_NAME_BYTES = 65,      /* one directory name, NUL included */
    VEL_MAX_NESTING = 1000,       /* levels of dependents that the walks descend */
    VEL_APP_FIELDS = 16           /* uint32_t words in each application space */
};

/* Colour triple of the context: red, green, blue. */
typedef struct vel_rgb {
    uint8_t r, g, b;
} vel_rgb;

/* One text record, in memory exactly as in the text file (1008 bytes). */
typedef struct vel_text_rec {
    uint32_t reserved;         /* first word: copied, never interpreted; in the unused
                                  record 0 the loader keeps the number of text
                                  records (text_count + extra_texts + 1) */
    uint32_t cursor_index;     /* character index of the text cursor in `text` */
    char text[VEL_TEXT_BYTES]; /* NUL-terminated; byte 10 ends a paragraph */
} vel_text_rec;

/* One record of the form description file (776 bytes, little-endian).
 * Record k of the file becomes object k + 1.  The reserved words stand
 * where the object record keeps run-time state and are ignored on reading. */
typedef struct vel_object_file_rec {
    uint32_t x, y, width, height;          /* offset 0 */
    uint32_t fill_r, fill_g, fill_b;       /* 16 */
    char label[VEL_STRING_BYTES];          /* 28 */
    uint32_t font_choice;                  /* 96 */
    uint32_t font_size;                    /* 100 */
    char font_path[VEL_STRING_BYTES];      /* 104 */
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
    uint32_t dep_objs[VEL_MAX_DEPENDENTS]; /* 288 */
    uint32_t reserved_scroll_x;            /* 688 */
    uint32_t reserved_scroll_y;            /* 692 */
    uint32_t scroll_max_x;                 /* 696 */
    uint32_t scroll_max_y;                 /* 700 */
    char image_path[VEL_STRING_BYTES];     /* 704 */
    uint32_t clip_mode;                    /* 772 */
} vel_object_file_rec;

/* One entry of the object table.  Fields marked "run time" start at 0 and
 * are never read from the form file. */
typedef struct vel_object {
    uint32_t x, y;                    /* top left corner, absolute screen pixels */
    uint32_t width, height;           /* 0 in either: not drawn, not hit, not walked */
    uint32_t fill_r, fill_g, fill_b;  /* body colour, low byte used */
    char label[VEL_STRING_BYTES];     /* caption of one-line objects (types 2, 5, 6) */
    uint32_t font_choice;             /* VEL_FONT_*; other values: no text */
    uint32_t font_size;               /* point size for own_font */
    char font_path[VEL_STRING_BYTES]; /* TrueType file for own_font */
    TTF_Font *own_font;               /* run time: opened at start-up for font_choice 1 */
    uint32_t text_index;              /* text record and line buffer number, 0 none */
    uint32_t text_r, text_g, text_b;  /* text and cursor colour */
    uint32_t margin_left, margin_right, margin_top, margin_bottom;
    uint32_t centred;            /* 1: a kind-1 window centres its text line */
    uint32_t line_width;         /* widest formatted line; 0 computed on first use */
    uint32_t line_spacing;       /* extra pixels between lines */
    uint32_t number_of_lines;    /* run time: index of the last formatted line */
    uint32_t reserved;           /* not used; in the unused record 0 the loader
                                    keeps the number of object records
                                    (object_count + extra_objs + 1) */
    uint32_t hidden;             /* nonzero: not drawn, not hit */
    uint32_t type;               /* VEL_TYPE_* */
    uint32_t window_kind;        /* VEL_WINDOW_* for windows */
    uint32_t editable;           /* 1: may hold the text cursor */
    uint32_t cursor_x, cursor_y; /* run time: pixel position of the text cursor */
    uint32_t text_length;        /* characters of the label or the text record */
    uint32_t cursor_line;        /* run time: formatted line holding the cursor */
    uint32_t cursor_column;      /* run time: column of the cursor in that line */
    uint32_t max_chars;          /* character limit of entry fields */
    uint32_t border_style;       /* VEL_BORDER_* */
    uint32_t border_inset;       /* border offset from the inner area */
    uint32_t border_r, border_g, border_b;
    uint32_t master;                       /* master object, 0 top level */
    uint32_t dep_objs[VEL_MAX_DEPENDENTS]; /* dependents, the list ends at the first 0 */
    uint32_t scroll_x, scroll_y;           /* run time: scroll offset of the contents */
    uint32_t scroll_max_x;                 /* horizontal scroll range, 0 five screen widths */
    uint32_t scroll_max_y;                 /* vertical scroll range, 0 five screen heights */
    char image_path[VEL_STRING_BYTES];     /* picture file of a type-4 object */
    SDL_Surface *image;                    /* run time: picture of a type-9 object */
    uint32_t clip_mode;                    /* VEL_CLIP_*; other values: no limit */
    char *stream;                          /* run time: external text of a chain head */
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
    uint32_t frame_mode;    /* VEL_FRAME_MODE_*; other values: mode buttons off */
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
    char dir_names[VEL_DIR_ENTRIES][VEL_DIR_NAME_BYTES]; /* directory entries, NUL-terminated */
    uint32_t dir_order[VEL_DIR_ENTRIES];          /* indexes into dir_names in display order */
    uint32_t window_stack[VEL_WINDOW_STACK_SIZE]; /* open windows, entry 0 in front */
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
 * blank line and ends the process with status 0; a table that cannot be
 * allocated ends it with status 1.  Use vel_load_form to get an error
 * result instead.
 * Loading rules: record k of the form file becomes object k + 1; `hidden`
 * is taken only for nonzero types that are top level or menus; dep_objs
 * only when the first entry is nonzero; trailing bytes short of a whole
 * record are ignored.  A string without a NUL inside its field is cut at 67
 * characters, a text without a NUL in its 1000 bytes at 999.  One spare line
 * buffer, zeroed, lies behind the block so that the step from a last
 * buffer's line 39 into "line 40" stays inside the allocation.
 * Table sizes: objects[0].reserved = object_count + extra_objs + 1 and,
 * when texts are loaded, text_recs[0].reserved = text_count + extra_texts +
 * 1 (the line buffers are one more); every range check reads them there.
 * Malformed records are reported once each, one line per record and field
 * on standard output, and loading goes on with the guarded value:
 *   "velumo: object N: master is the object itself, set to 0"
 *   "velumo: object N: master M is outside the table, set to 0"
 *   "velumo: object N: dep_objs entry D is outside the table, set to 0"
 *     (every such entry becomes 0; the first one is named)
 *   "velumo: object N: text_index T is outside the text records, set to 0"
 *   "velumo: object N: master chain runs in a cycle" (for each object on it)
 *   "velumo: object N: dep_objs entry D closes a cycle" (N lies below D)
 * A master set to 0 makes the object top level, also for the hidden rule.
 * Cycles are left as they are: the walks stop on them.  A number is outside
 * the table when it is at least objects[0].reserved, so spare records are
 * valid targets.  A valid form prints none of these lines. */
void vel_start_velumo(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path);

/* vel_start_velumo for tools and careful applications: the same loading,
 * but the files are opened read-only (a form installed system-wide loads
 * for every user), and nothing ends the process.  Returns 1 when loaded,
 * -1 when a needed file could not be opened (after printing the same quoted
 * message) or a table could not be allocated.  On -1 nothing is left
 * allocated.  Both entry points also write to standard error: one line
 * naming a file that cannot be opened and the reason ("velumo: cannot open
 * form file 'PATH': No such file or directory"), one when memory runs out,
 * and a warning for a form or text file that holds no whole record or ends
 * in bytes that are no whole record. */
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

/* Releases the form that vel_load_form or vel_start_velumo loaded, and
 * nothing else: the display, the context font and SDL stay, so another form
 * can be loaded into the same context.  Closes the own fonts and frees the
 * pictures of the loaded objects 1..object_count, frees text records and
 * line buffers when texts_loaded is 1 (text_count becomes 0), and frees the
 * object table.  Writes object_count, active_window, window_to_activate,
 * cursor_object and window_count to 0, since they name objects that are
 * gone; every pointer it frees is set to null.  With texts_loaded 0 the
 * text memory stays allocated (and its pointers stay set). */
void vel_unload_form(vel_context *ctx);

/* Closes the context font, frees text_surface and screen, releases the
 * form as vel_unload_form does, then quits SDL_ttf and SDL.  Every pointer
 * it frees is set to null, so nothing is freed twice. */
void vel_close(vel_context *ctx);

/* ========================================================================
 * String and number helpers (no context)
 * ======================================================================== */

/* Compares up to n + 1 characters.  Returns 0 when nothing was compared and
 * the counter reached n (n = 0 always), else: when the compared positions
 * reach n, the verdict of the LAST compared position only (1 equal, 2
 * different; an earlier difference is forgotten); when a string ends before
 * n, 2 if a goes on, 1 if b ended too, else 2 -- so two strings of the same
 * length shorter than n count as equal. */
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

/* Locks (unlocks) a surface when SDL requires it for direct pixel access:
 * a nonzero offset, or a hardware, asynchronous-blit or RLE surface. */
void vel_lock(SDL_Surface *surface);
void vel_unlock(SDL_Surface *surface);

/* Writes one pixel straight into ctx->screen at 1, 2 or 4 bytes per pixel;
 * the colour is mapped with SDL_MapRGB on every call.  A 3-byte screen
 * prints the line "24 bit is not supported ! ", any other depth "Error -
 * can't get color depth. ", once per pixel asked for, and writes nothing.
 * A pixel outside the surface is dropped (after the depth messages).  It
 * takes no lock: callers lock around whole outlines. */
void vel_draw_pixel(vel_context *ctx, uint32_t x, uint32_t y, uint8_t r, uint8_t g, uint8_t b);

/* Draws a horizontal or vertical line, both end points included, through
 * vel_draw_pixel.  A line whose end points are equal, or a slanted line,
 * draws nothing.  The direction follows the signed differences x1 - x2 and
 * y1 - y2; the running coordinate is compared unsigned with the end, and a
 * run falling to 0 stops after drawing 0.  The run is cut to the surface
 * before any pixel is asked for, so a line reaching far beyond the screen
 * (an object right of its edge has a wrapped, huge cut width) costs no more
 * than one across it; on an unsupported depth the messages count only the
 * pixels on the surface. */
void vel_draw_line(vel_context *ctx, uint32_t x1, uint32_t y1, uint32_t x2, uint32_t y2, uint8_t r,
                   uint8_t g, uint8_t b);

/* Fills a box with SDL_FillRect at any depth.  The values are stored into
 * the 16-bit fields of an SDL_Rect (higher bits dropped); SDL clips to the
 * surface.  No lock is taken. */
void vel_draw_box(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                  uint8_t g, uint8_t b);

/* Outlines the rectangle's outermost pixels under vel_lock: top, right,
 * bottom and left edge in that order, corners drawn twice.  A width of 1
 * shows only the two vertical edges (the horizontal ones are single points,
 * which vel_draw_line does not draw); a height of 1 only the horizontal. */
void vel_draw_rectangle(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                        uint8_t g, uint8_t b);

/* Usable width of a top-level object: when x + width - 1 lies beyond
 * screen_width (unsigned), screen_width - x - 2, else its width.  An object
 * starting right of the screen gets a wrapped, huge width. */
uint32_t vel_p_cutted_w_independent(vel_context *ctx, uint32_t obj);

/* Usable height of a top-level object: when y + height - 1 lies beyond
 * screen_height, screen_height - y - 5 (five rows kept free at the bottom
 * against two columns at the right), else its height. */
uint32_t vel_p_cutted_h_independent(vel_context *ctx, uint32_t obj);

/* Usable width of a dependent inside its master: limit = master x + master
 * width - 1 - margin_right, the master's width being its own dependent
 * width when it has a master, else its cut width; when the object's right
 * edge reaches the limit (signed), limit - (x + 1), else its width.
 * obj must have a master.  A master chain longer than the object table (a
 * cycle) is followed that far and its last master taken as the root; the
 * height does the same. */
uint32_t vel_p_cutted_w_dependent(vel_context *ctx, uint32_t obj);

/* Usable height of a dependent, as the width but one level further up: the
 * master's height is the dependent height of the master's master when that
 * exists, else the master's cut height.  obj must have a master. */
uint32_t vel_p_cutted_h_dependent(vel_context *ctx, uint32_t obj);

/* The root of obj's master chain (the ancestor without a master), 0 for a
 * top-level object.  On a cycle in the master links the walk stops at an
 * object of the cycle and returns it, so callers' walks to the root end. */
uint32_t vel_search_master(vel_context *ctx, uint32_t obj);

/* Writes the exclusive limits a dependent may use: pixels strictly between
 * left and right, top and bottom.  Directly inside the root: clip_mode 0
 * gives the root's inner area, 1 its whole rectangle, any other value no
 * limit (0) from the rectangle; a side cut by the screen ends at the cut
 * without its margin.  Deeper chains narrow the limits level by level up
 * to the root, each master's frame taken one pixel up and left of its
 * record.  Limits left of or above the screen come out as wrapped negative
 * values (compare them signed).  obj must have a master. */
void vel_get_borders_for_dep_object(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                                    uint32_t *top, uint32_t *bottom);

/* Writes the exclusive limits of obj's text area: its inner area (margins
 * inside its cut rectangle when top level, inside its record's rectangle
 * when dependent), for a dependent further narrowed to the limits of
 * vel_get_borders_for_dep_object (signed comparisons). */
void vel_get_borders_for_text(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                              uint32_t *top, uint32_t *bottom);

/* Paints one object: body, text, then vel_evoke_borders.  No refresh.
 * - Body: top level a box of its cut size (16 x 16 for objects 1..7) or,
 *   for type 9, the whole picture; a dependent of types 1..9 the part inside
 *   its masters' limits (box, or the matching cut of the picture; nothing
 *   when it lies wholly outside).  Type 4 has no body; type 0 and codes of
 *   10 or more have a body only at top level.
 * - Writes the record: a top-level window at x <= 10 or y <= 24 (signed) is
 *   moved to x = 11, y = 25; a kind-1 window with centred 1 gets scroll_x
 *   set so each line is centred in its text area.
 * - Text: lines 0..number_of_lines (at most 40) of the line buffer for
 *   windows and text areas with a non-empty text record and for chain
 *   members whose first line is non-empty; the caption `label` of types 2,
 *   5 and 6, painted once at the first visible line position.  Each line is
 *   clipped to the text limits.  The first line counts one row taller than
 *   the later ones, and a line cut on both sides shows one pixel less than
 *   the limits admit and keeps the source x of the line before it.
 * - No text is painted with a font_choice other than 0 or 1, or when the
 *   chosen font is null.
 * - Each rendered line replaces ctx->text_surface; the previous surface is
 *   freed first. */
void vel_evoke_object(vel_context *ctx, uint32_t obj);

/* Draws obj's border under vel_lock/vel_unlock in the border colour.
 * Styles 1 and 3: a frame border_inset + 1 pixels outside the inner area;
 * 4 and 5: the outline shifted right and down by border_inset (a shadow);
 * 0, 2 and others: nothing.  Each of the four lines is clipped to
 * screen_rect (top level: strictly between x and x + w - 1, y and
 * y + h - 1) or to the dependent's limits, and is left out when its own
 * position is outside them. */
void vel_evoke_borders(vel_context *ctx, uint32_t obj);

/* ========================================================================
 * Text layout: formatting, chained flow, loading and reset
 *
 * Every text buffer is a table of 40 lines of 100 bytes (line n at byte
 * 100 n), each a NUL-terminated string of at most 99 characters; the buffers
 * of all text records lie back to back, so line slot 40 of buffer t is line 0
 * of buffer t + 1.  number_of_lines of an object is the index of its last
 * formatted line, not a count.  Words are separated by NUL, line feed and
 * space only; tab, carriage return and every other byte belong to words.
 * Spaces are kept in the lines.  Runs of more than 70 word characters are
 * cut into words of 70.  With umlaut_conversion 1 the bytes 0x84, 0x94 and
 * 0x81 become 0xE4, 0xF6 and 0xFC in the lines (nothing else is translated;
 * the text record is not changed).  Widths are measured with TTF_SizeText in
 * the object's font (font_choice 0 the context font, 1 own_font); an object
 * without a font measures every string as 0 pixels wide.
 *
 * The steps from line 39 into the slots behind a buffer are not bounded by
 * the formatter: they rely on the spare line buffer vel_start_velumo keeps
 * behind the block, so even the last buffer's line 40 lies inside the
 * allocation.  Line buffers set up by the application need the same spare,
 * and the number of text records in text_recs[0].reserved.  An object whose
 * text_index lies outside the text records is formatted and painted as one
 * without text; without text tables nothing reads or writes text memory.
 * ======================================================================== */

/* Breaks the text of a window (type 1) or text object (type 3) with a text
 * record into lines of its line buffer and returns the index of the last
 * line written, also stored in number_of_lines.  Other types and text_index
 * 0 return 0 and change nothing.  A line_width of 0 is first set to
 * right - left - 1 of the text area (vel_get_borders_for_text) and kept.
 * All 40 lines are cleared first.  An empty text returns 0 and leaves
 * number_of_lines as it was.  Text that needs a 41st line is cut there; a
 * word that goes to a new line from line 39 lands in line slot 40 and 40 is
 * returned.  A space that makes a line too wide starts the next line.  A
 * word split over lines by vel_copy_word_into_line stays in the word buffer
 * and is placed again, joined to the next word.  A record without a NUL in
 * its 1000 bytes is read as cut at 999 characters. */
uint32_t vel_format_object_text(vel_context *ctx, uint32_t obj);

/* Places word_length characters of word (NUL-terminated there) into obj's
 * line buffer at (*line, *column) and moves line and column on.  A
 * line_width of 0 is first set to width - (margin_right + margin_left).
 * By vel_check_line_volume: 1 appends the word; 2 ends the line and puts the
 * word at the start of the next one, without testing for line 39; 3 splits
 * it character by character, measuring the line after each one, a
 * character that does not fit starting the next line: result 1 when the
 * last character was kept, -1 when the lines ran out (at line 39, or after
 * a line full to column 99 was continued into slot 40).  After cases 1 and 2
 * the line is ended and the next one started (NUL at its start) when
 * break_after is 1 or the column reached 99; the result is 0.  word_length
 * is never changed.  Guard: a *column above 99, or a *line and word that
 * could lead to writes past line slot 79 (two lines on), return -1 and
 * change nothing. */
int32_t vel_copy_word_into_line(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                                uint32_t *column, uint32_t *word_length, uint32_t break_after);

/* The fitting test of a word on line *line of obj's line buffer: 1 when
 * word_length <= 98 - *column and the word's width is at most line_width
 * minus the line's width; else 2 when word_length <= 98 and the word is at
 * most line_width wide; else 3.  98 - *column is unsigned, so a column of 99
 * wraps round and counts as room.  A *line above 79 returns 3. */
uint32_t vel_check_line_volume(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                               uint32_t *column, uint32_t *word_length);

/* Prepares the caption (label) of a one-line object.  An empty label
 * returns 0.  The label is cut at its first line feed, in the object.  A
 * button (type 2) is centred where at least 3 pixels are spare: margin_left
 * = (width - caption width) / 2 gives result 1, margin_top = (height -
 * caption height) / 2 result 2 (overriding 1); neither leaves the margins
 * and returns 0.  Types 5 and 6 return 3, all others 0, unchanged.  The
 * caption is not translated for umlauts. */
uint32_t vel_format_small_obj(vel_context *ctx, uint32_t obj);

/* Flows the stream of a chain master (type 8) through its chain members:
 * dep_objs[0], [1], ... as long as the entry is a type-8 object with a text
 * record (at most 100).  Lines break as in vel_format_object_text; when a
 * member's 40 lines are full the text goes on in line 0 of the next member,
 * and the end of the chain cuts the rest.  Returns the line index reached in
 * the last member used; 0 and nothing done when the master is not type 8,
 * has no stream, its first entry is no member, or the stream is empty.  The
 * first member's line_width of 0 is set from its text area; others get
 * theirs in vel_copy_word_big.  Lines are not cleared beforehand.
 * Deliberate oddities: the flow keeps its own current member, changed only
 * by its own moves (a space or a full line on line 39); spaces are measured
 * with, and the final line index stored into, that member even after
 * vel_copy_word_big moved on, and its next move, sharing the chain position,
 * stores the line index into it and lands behind the member in use.  A line
 * feed with no word pending goes to the next line without testing for line
 * 39; consecutive ones go on into the slots behind the member's buffer, up to
 * slot 79 (the last line of the buffer behind), where further line feeds
 * stay.  A space that arrives on a line above 39 is dropped.
 * vel_copy_word_big may print debug lines on standard output. */
uint32_t vel_format_stream_to_linked_objects(vel_context *ctx, uint32_t master);

/* Places a word for the chain master's flow in member dep_objs[*chain_position]
 * (its line_width of 0 is first set to width - (margin_right + margin_left))
 * at (*line, *column) of text buffer *text_index, moving to further members
 * where a line break falls on line 39 or below, and updating chain position,
 * text index, line and column.  Sets *word_length to 0 when the word was
 * placed.  Results: -1 the chain has ended (the flow stops); 0 placed; 1
 * placed on the current line without a break or placed after a move.  When a
 * word needs the next line on line 39 and there is no next member, it is not
 * placed and keeps its length.  A word wider than a line is split character
 * by character and its terminating NUL is copied too, as one more character:
 * whatever later joins that line stands behind the embedded NUL and is
 * neither measured nor painted.  A split word followed by a line break on
 * line 39 prints "1142 next chain \n " with puts, then " next chain: %d \n \n"
 * with the move's result and, if the move failed, "1153 object %d
 * number_of_lines %d \n \n" with the member variable as the failed move left
 * it (the entry that ended the chain, 0 past the list's end) and the line
 * index stored into that object.  The split path treats line indexes above
 * 39 like 39.  A *chain_position above 99 returns -1 at once, and so does
 * a context without text tables, a *column above 99, and a *line and word
 * that could lead to writes past line slot 79; a *text_index outside the
 * text records is set to 0 first. */
int32_t vel_copy_word_big(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                          uint32_t *text_index, const char *word, uint32_t *line, uint32_t *column,
                          uint32_t *word_length, uint32_t break_after);

/* Moves a chain flow to its next member: stores *line into number_of_lines
 * of *member, adds 1 to *chain_position and takes the master's entry there.
 * Returns 1 (the chain has ended) when the position passes 99, or the entry
 * is 0, not of type 8 or has text_index 0; *member and *text_index are
 * overwritten before these tests.  Otherwise sets *text_index, *line 0,
 * *column 0, clears line 0 of the new member's buffer and returns 0.  The
 * new member's line_width is not initialised here. */
int32_t vel_go_to_next_chainmember(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                                   uint32_t *member, uint32_t *text_index, uint32_t *line,
                                   uint32_t *column);

/* Replaces the text of obj's text record and formats it; returns the result
 * of vel_format_object_text.  Clears lines 0..number_of_lines of the old
 * text first.  Expects 1 to 999 characters: a longer text is cut at 999.
 * cursor_index is left alone (see vel_reset_textobject).  With text_index 0
 * (or one outside the text records) the text goes into the unused record 0
 * and 0 is returned; without text tables nothing is stored. */
uint32_t vel_load_window_text(vel_context *ctx, uint32_t obj, const char *text);

/* vel_load_window_text, then vel_format_small_obj of button_a and of
 * button_b; returns the result of the second. */
uint32_t vel_load_window_text_buttons(vel_context *ctx, uint32_t obj, const char *text,
                                      uint32_t button_a, uint32_t button_b);

/* Puts the text cursor to the top left of obj's text area: cursor_line and
 * cursor_column 0, cursor_x = x + margin_left, cursor_y = y + margin_top.
 * mode 0 (one-line object) also sets text_length to the label's length;
 * mode 1 (text object) sets it to the length of its record's text and that
 * record's cursor_index to 0 (record 0 for a text_index outside the text
 * records; text_length 0 without text tables); other modes leave
 * text_length. */
void vel_reset_textobject(vel_context *ctx, uint32_t mode, uint32_t obj);

/* Right-aligns obj's label in a field of field_length characters, filling
 * the left with fill_char, and sets text_length to field_length; returns
 * field_length.  The length is taken from string (normally the label
 * itself): when it is field_length or more nothing changes and that length
 * is returned.  An empty string fills the whole field.  A field_length above
 * 67 does not fit the label: nothing changes and 0 is returned. */
uint32_t vel_fill_form_with_dummies(vel_context *ctx, const char *string, uint32_t obj,
                                    uint32_t field_length, char fill_char);

/* Reads a whole file into a new buffer, for use as a chain master's stream;
 * the caller frees it with free.  The file is opened with mode "r+b" first
 * to take its size, so a file that may not be written gives null, as does a
 * missing one.  The buffer holds the file's bytes and one NUL behind them,
 * so it is always a terminated string (cut at the file's first NUL, if it
 * has one); an empty file gives an empty string.  A buffer that cannot be
 * allocated gives null and a line on standard error. */
char *vel_read_external_stream(const char *path);

/* ========================================================================
 * Scene drawing, selection marks, text cursor
 * ======================================================================== */

uint32_t vel_draw_all_objects(vel_context *ctx, uint32_t format_first, uint32_t refresh);
void vel_draw_dep_objs(vel_context *ctx, uint32_t obj);
void vel_switch_dep_object(vel_context *ctx, uint32_t master);
void vel_draw_selected_window(vel_context *ctx);
void vel_draw_and_screenup_selected_window(vel_context *ctx);
void vel_undraw_object(vel_context *ctx, uint32_t obj);

void vel_draw_selected_lines(vel_context *ctx, uint32_t win);
void vel_draw_selected_box(vel_context *ctx, uint32_t win);
void vel_undraw_selected_lines(vel_context *ctx, uint32_t win);
void vel_undraw_selected_box(vel_context *ctx, uint32_t win);

/* Draws the text cursor of obj: a vertical line one font height tall (the
 * own font's for font_choice 1, else the context font's) at (cursor_x,
 * cursor_y), in the text colour, clipped to the text limits L, R, T, B of
 * vel_get_borders_for_text.  Writes nothing; no lock, no refresh.  Nothing
 * is drawn unless L < cursor_x < R.  Deliberate oddities: the top is
 * compared with T and B unsigned and the bottom signed, so with T = -1
 * every cursor counts as cut at the top and starts at row 0; a cursor cut
 * on both sides always runs from T + 1 to B - 1, upward when the limits
 * cross; a visible part of one pixel is not shown. */
void vel_draw_cursor(vel_context *ctx, uint32_t obj);

/* ========================================================================
 * Input: selection loops, hit testing, key translation, text editing
 * ======================================================================== */

/* Runs the selection loop until a left-button release lands on stop_a,
 * stop_b or frame button 7, and returns that object.  A stop value of 0
 * returns 0 at once, without reading an event; a negative one never
 * matches, so -1 waits for object 7 alone.  Each pass fetches the next
 * event into ctx->event and dispatches on its type byte:
 *   - key-down: vel_getfirstkeyinformation;
 *   - key-up: vel_getfinalkeyinformation, then vel_get_text;
 *   - release of the left button: the object under the pointer
 *     (vel_test_all_objects, 0 over empty space) becomes the result, and the
 *     event is consumed by writing 0 into its type byte;
 *   - anything else (motion, presses, other buttons, SDL_QUIT) is ignored:
 *     the loop has no way out but a hit on a stop object or on object 7.
 * An unconsumed event is dispatched again on the next pass when no new one
 * has arrived.  When no event is pending the loop sleeps about a
 * millisecond (SDL_Delay) before that pass, so waiting costs next to no
 * processor time; the order in which events are handled is the same. */
uint32_t vel_get_mouse_selection(vel_context *ctx, int32_t stop_a, int32_t stop_b);

/* vel_get_mouse_selection with a single stop object. */
uint32_t vel_get_mono_mouse_selection(vel_context *ctx, int32_t stop);

/* The object under the point (x, y), or 0, trying in this order:
 *   1. frame buttons 1..7 (only up to object_count) that are not hidden,
 *      upward; the first hit is returned without its dependents;
 *   2. active_window, whatever its hidden flag: its innermost dependent
 *      under the point (vel_test_dep_objs), else the window itself;
 *   3. other windows (type 1, not hidden) from object_count down to 8: a
 *      higher number wins where windows overlap, the window stack is not
 *      consulted, and the window itself is returned, never a dependent;
 *   4. free-standing objects (no master, not a window, not hidden) from 8
 *      up to object_count: the innermost dependent, else the object. */
uint32_t vel_test_all_objects(vel_context *ctx, uint32_t x, uint32_t y);

/* The innermost dependent of obj under the point, or 0.  The dep_objs
 * entries are tried in list order up to the first 0, and the first hit
 * wins (earlier entries lie on top); its own dependents are tried next.
 * Hidden dependents, those of zero width or height and those with border
 * style 2 or 3 are never hit, and their dependents are not reached
 * through them.  An entry naming an object whose dependents are being
 * tested already (a cycle) is skipped, and the whole test tries at most as
 * many entries as the table has records. */
uint32_t vel_test_dep_objs(vel_context *ctx, uint32_t obj, uint32_t x, uint32_t y);

/* 1 when obj.x < x < obj.x + width and obj.y < y < obj.y + height, else 0:
 * the outermost pixel rows and columns belong to no object.  A dependent
 * object must also lie strictly inside the limits its masters leave it
 * (vel_get_borders_for_dep_object).  All comparisons are signed. */
uint32_t vel_in_object(vel_context *ctx, uint32_t obj, int32_t x, int32_t y);

/* Translates a key-down in ctx->event through the built-in German
 * keyboard table.  Acts only when cursor_object is nonzero and the event is
 * SDL_KEYDOWN.  Modifiers count only when the mask is exactly one Shift key
 * (1 or 2) or exactly the left Alt key (256): with Caps Lock, Num Lock or
 * both Shift keys a key counts as plain.  Symbols up to 255 type themselves
 * (letters give their capitals under Shift; umlauts, the digit row and
 * some punctuation follow the German layout; left Alt gives @ [ ] { } | ~
 * and the backslash);
 * Return and keypad Enter give 271; the arrows, Insert, Backspace and
 * Delete keep their symbols; other symbols from 256 on give no code.
 * Shift+3 gives 0xFFFFFFA7 and Alt+e gives 321, which the editor never
 * types.  Sets key_printable (1 for characters, 0 for control keys; a key
 * without code leaves it), but in a numeric field (type 6) to 1 exactly for
 * the digit symbols 48..57, whatever the modifiers.  A key with a code sets
 * key_code and consumes the event: keysym.sym and the type byte become 0. */
void vel_getfirstkeyinformation(vel_context *ctx);

/* On an SDL_KEYUP of any key, moves a pending key_code into final_key and
 * clears key_code: each release delivers the last key pressed, once. */
void vel_getfinalkeyinformation(vel_context *ctx);

/* Applies final_key to cursor_object, then clears final_key and
 * key_printable and redraws the active window with one screen update of
 * its rectangle (vel_draw_and_screenup_selected_window).  Does nothing,
 * final_key included, when final_key is 0 or the cursor object is not
 * editable.  Entry fields (types 5, 6) edit their label, at most the
 * smaller of 64 and max_chars characters; multi-line texts (types 3, 1)
 * edit the text record text_index, at most 999 characters in 40 formatted
 * lines, and are reformatted after each change.  Keys: 271 Enter (new
 * paragraph), 273/274 Up/Down, 275/276 Right/Left, 277 Insert (toggles
 * insert_mode: 0 insert, any other value overwrite), 8 Backspace, 127
 * Delete, and any code up to 255 with key_printable 1 is typed.  Writes the
 * text, text_length, cursor_line, cursor_column, cursor_x, cursor_y,
 * scroll_x, scroll_y and the record's cursor_index.  Deliberate oddities:
 * overwriting the last character of a field appends it once more ("abc"
 * becomes "abxx"); Up and Down place the cursor one character right of its
 * column; Right never scrolls; Left never leaves its line; overwriting at
 * the end of a multi-line text puts the terminator at the cursor's column.
 * Text memory never changes outside its field: the last byte of the label
 * or text record is made a terminator on entry and kept one, and a
 * multi-line text takes typed characters only while cursor_index is below
 * 999. */
void vel_get_text(vel_context *ctx);

/* Sets the text record's cursor_index of cursor_object from its
 * cursor_line and cursor_column, walking the formatted lines: a paragraph
 * break takes one text position, a wrap made by the formatter none.  A
 * position beyond the last formatted line leaves cursor_index unchanged. */
void vel_get_position_in_stream(vel_context *ctx);

/* Sets cursor_line and cursor_column of cursor_object from its record's
 * cursor_index, by the same walk.  An index at the end of a wrapped line
 * stays at that line's end; one just after a paragraph break goes to
 * column 0 of the next line.  An index the walk never reaches leaves both
 * unchanged. */
void vel_get_column_row(vel_context *ctx);

/* ========================================================================
 * Windows: activation, stack, dialogs, frame actions
 *
 * Windows are top-level objects of type 1.  window_stack holds the open
 * ones, entry 0 in front; window_count counts the entries in use.  The
 * front window is the active window: it carries the selection marks and
 * the frame buttons (objects 1..7) and holds or contains cursor_object.
 * Activation and closing change records and erase what they take away,
 * but do not redraw: callers redraw (vel_select_window and the dialogs do
 * a full redraw themselves).  Frame buttons are only touched when the form
 * loaded them (object_count of at least the button's number).
 * ======================================================================== */

/* Brings window_to_activate (W) to the front and makes it active.
 * Ignored, window_to_activate kept, unless W is a window (type 1) without
 * a master and not already active.  A closed W (hidden 1) is opened:
 * hidden becomes 0 and, once stacked, it is counted in window_count; with
 * 100 windows counted a closed W is only marked visible and the call ends
 * there.  A window found anywhere among the 100 stack entries is taken out
 * of its place; the counted entries move down one (an entry pushed past
 * index 99 is lost) and W goes into entry 0.  A window already visible but
 * not stacked enters uncounted.  An open window is raised even with a
 * full stack.  Then its cursors are started (vel_initiate_cursor_win), the
 * previous active window's marks and shown frame buttons are erased,
 * active_window = W, window_to_activate = 0, cursor_object = W when W's
 * editable is 1, its first cursor-taking dependent (or 0) when editable is
 * 0, unchanged otherwise; last vel_set_operators. */
void vel_activate_window(vel_context *ctx);

/* Closes window win (0: the active window; nothing when none is active,
 * nor for a number outside the object table).
 * A hidden or unstacked window is ignored.  Otherwise it leaves the stack
 * (the entries below move up, window_count drops), hidden becomes 1 and
 * its area is erased.  Closing the active window also erases its marks,
 * erases and hides its frame buttons, clears cursor_object when the window
 * itself held it (not when a dependent did), and activates the window that
 * moved into its stack place, if any; nothing is redrawn. */
void vel_close_win(vel_context *ctx, uint32_t win);

/* Places the frame buttons on the active window, w being its visible
 * width (vel_p_cutted_w_independent): kind 0 shows buttons 1..7 with
 * button k at x + w - 112 + 16 (k - 1); kind 1 shows button 7 at
 * x + w - 16 and button 1 next to it at x + w - 32 and hides 2..6; both at
 * y - 24.  Other kinds change nothing.  Without an active window, or with
 * a hidden one, all seven are hidden.  Writes x, y and hidden of 1..7. */
void vel_set_operators(vel_context *ctx);

/* Acts on the object the user hit, stored in window_to_activate: a window
 * without master is activated and everything redrawn and shown; an
 * editable (1) window, text object, entry field or chain member becomes
 * cursor_object and the active window is redrawn and its rectangle shown
 * (window_to_activate is kept); anything else does nothing. */
void vel_select_window(vel_context *ctx);

/* Modal question: activates win, redraws everything, runs
 * vel_get_mouse_selection with first and last, closes the active window
 * (bringing back the one below) and returns the loop's result: first,
 * last, or 7 for the close button.  Keys typed meanwhile reach the editor.
 * The caller redraws after it. */
uint32_t vel_decide_window(vel_context *ctx, uint32_t win, uint32_t first, uint32_t last);

/* Modal notice: as vel_decide_window with the single stop object obj
 * (vel_get_mono_mouse_selection); frame button 7 ends it too. */
void vel_notice_window(vel_context *ctx, uint32_t win, uint32_t obj);

/* Starts the text cursor of win and of its dependents: an editable (1)
 * object whose cursor_x and cursor_y are both 0 gets cursor_x = x +
 * margin_left, cursor_y = y + margin_top, cursor_line and cursor_column 0.
 * A cursor placed once is never reset. */
void vel_initiate_cursor_win(vel_context *ctx, uint32_t win);

/* The same for obj's dependents only, recursively: dependents of width or
 * height 0 are skipped and not descended into, and only those of a
 * nonzero type get a cursor. */
void vel_initiate_cursor_dep_objs(vel_context *ctx, uint32_t obj);

/* The first dependent of obj, depth first in list order, that can take
 * the cursor: nonzero width and height and editable 1.  Sized dependents
 * with editable 0 are searched in turn; hidden is not looked at.  0 when
 * none. */
uint32_t vel_check_cursor_dep_objs(vel_context *ctx, uint32_t obj);

/* Left button down on frame button window_to_activate.  Only with an
 * active full-frame (kind 0) window and frame_mode 0 (resize) or 1
 * (scroll): button 2 shrinks the height / scrolls down, 3 grows the
 * height / scrolls up, 5 shrinks the width / scrolls right, 6 grows the
 * width / scrolls left.  Other buttons do nothing. */
void vel_exa_left_pressed(vel_context *ctx);

/* Left button up on frame button window_to_activate, whatever the kind:
 * 1 moves the active window (vel_move_window); 4 switches frame_mode 0 to
 * 1 with mark_colour = mark_colour_b, 1 to 0 with mark_colour_a, then
 * redraws everything (other modes: nothing); 7 closes the active window
 * and redraws everything. */
void vel_exa_left_released(vel_context *ctx);

/* Moves the active window to the next left-button press, which it waits
 * for and consumes; every event before it is dropped and later ones stay
 * queued.  The context's event is cleared first, so only a press fetched
 * by this call counts.  While no event is pending the loop pauses about a
 * millisecond between polls.  The window, its marks and its frame buttons
 * are erased (for kind 0 the buttons from 1 up to the first hidden one);
 * the new corner is the press, with x at least 11 and y at least 25.  Its
 * own cursor (when editable is 1) and its dependents
 * (vel_update_dep_objs_after_move) move by the same difference; then the
 * buttons are placed and everything is redrawn.  Without an active window
 * it returns at once. */
void vel_move_window(vel_context *ctx);

/* Resizing of the active window by 4 pixels: width grows while below
 * screen_width - 50, height while below screen_height - 50; both shrink
 * while above 20.  The marks and the window are erased first and
 * everything is redrawn after, also when the limit refused the change.
 * Dependents keep their size and place.  Nothing without an active window. */
void vel_increase_win_w(vel_context *ctx);
void vel_increase_win_h(vel_context *ctx);
void vel_decrease_win_w(vel_context *ctx);
void vel_decrease_win_h(vel_context *ctx);

/* Scrolling of the active window's contents by scroll_step.  The offset
 * (scroll_x, scroll_y, signed) may run from -M to 2 M, M being
 * scroll_max_x or scroll_max_y, or from -5 to 5 screen widths or heights
 * when M is 0: right and down scroll while the offset is below the upper
 * end, left and up while it is above the lower end; otherwise nothing at
 * all happens.  Right and down add the step, left and up subtract it.  The
 * window's own cursor (editable 1) moves with the offset, except that
 * scrolling left moves it right as well.  The dependents move by the step
 * (vel_update_x_dependent_obj / _y_) towards higher coordinates for right
 * and down, lower for left and up; then the active window is redrawn and
 * its rectangle shown.  Nothing without an active window. */
void vel_scroll_win_up(vel_context *ctx);
void vel_scroll_win_down(vel_context *ctx);
void vel_scroll_win_left(vel_context *ctx);
void vel_scroll_win_right(vel_context *ctx);

/* Moves obj's dependents by d pixels along x (cursor_x too when editable
 * is 1): direction 1 subtracts, 2 adds, other values move nothing.  A
 * dependent follows when its clip_mode is 0, or 1 with a master that has a
 * master itself (clip_mode 1 directly on a top-level window stays put);
 * only followers are descended into.  The _y_ variant works on y and
 * cursor_y. */
void vel_update_x_dependent_obj(vel_context *ctx, uint32_t obj, uint32_t direction, uint32_t d);
void vel_update_y_dependent_obj(vel_context *ctx, uint32_t obj, uint32_t direction, uint32_t d);

/* Adds dx and dy (negative moves wrap as unsigned numbers) to x and y of
 * all of obj's dependents, recursively, whatever their size; the cursor
 * moves too for editable (1) windows, text objects, entry fields and chain
 * members. */
void vel_update_dep_objs_after_move(vel_context *ctx, uint32_t obj, uint32_t dx, uint32_t dy);

/* As vel_update_dep_objs_after_move, but dependents of width or height 0
 * are skipped and not descended into, and the cursor moves for every
 * dependent whose editable is 1, whatever its type. */
void vel_add_difference_toxy_dep_objs(vel_context *ctx, uint32_t obj, uint32_t dx, uint32_t dy);

/* ========================================================================
 * Menus and file selector
 * ======================================================================== */

/* Shows menu (hidden 0), paints it with its entries (its dependents up to
 * the first 0) and runs its own event loop until it is left or a left
 * button is released on it; then erases it, sets hidden to 1 and returns
 * the entry released on, or 0.  Each pass fetches one event (pausing about
 * a millisecond when none is pending) and reads the pointer.  The first
 * shown, sized entry under the pointer is highlighted: each of its fill
 * components above 20 is lowered by 20 and raised again, exactly, when the
 * highlight moves on or the menu closes; the menu is repainted and its
 * rectangle shown only when the highlight changes.  A left release is
 * tested at the event's own position; off every entry it returns 0.  The
 * menu is left, with 0, when the pointer is left or right of its visible
 * columns or below it, or above its top: with mode 1 (menu below a title
 * the pointer is still on) only after the pointer has been over an entry,
 * with any other mode at once.  A menu without entries sees no releases.
 * Other events are dropped.  The erased area is not shown: the caller
 * redraws.  The refreshed rectangle starts at the menu's corner, at 0 for
 * a coordinate before the screen and 5 pixels short of the edge for one
 * beyond it, and is cut to the screen.  menu 0, or a number outside the
 * object table, returns 0 at once. */
uint32_t vel_move_out_menu(vel_context *ctx, uint32_t menu, uint32_t mode);

/* Makes up to n rows under list's first dependent t (the template): row
 * t + k becomes dependent entry k, with the template's type, x, width,
 * height, fill and text colours, margin_top and margin_left, master =
 * list, and y = template y + (template height + 3) k.  It stops after the
 * first row numbered above object_count and at dependent entry 99; the
 * rows' records must exist (loaded or spare): it also stops before a row
 * outside the object table.  Nothing when list has no
 * dependent. */
void vel_prepare_fileselector(vel_context *ctx, uint32_t list, uint32_t n);

/* Reads the current directory's entries, "." and ".." included, in the
 * order the system delivers them, into dir_names (at most 100, each cut
 * to 64 characters), sets dir_last to their number - 1 and dir_order to
 * display order: by first byte only, ascending, by exchanges, so names
 * with the same first character keep no particular order.  A directory
 * that cannot be opened leaves the listing as it was; one that delivers
 * nothing (removed while current) leaves a single empty name, which
 * vel_load_dir_entries does not show. */
void vel_read_app_dir(vel_context *ctx);

/* Writes the listing into list's dependents in display order, the
 * template first: label = the name, hidden 0, width 180, up to dir_last,
 * entry 99 or the first 0 entry.  The list's height becomes rows filled x
 * (first row's height + 3) + 40; the rows left over are hidden with width
 * 0.  Nothing when dir_last is 0; a dir_last above 99 counts as 99.  Order
 * entries beyond the table show an empty name. */
void vel_load_dir_entries(vel_context *ctx, uint32_t list);

#ifdef __cplusplus
}
#endif

#endif /* VELUMO_H */
