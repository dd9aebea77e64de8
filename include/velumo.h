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
 * Robustness:
 * - Numbers: every object number read from the tables or from the context
 *   (master, dep_objs entries, active_window, window_to_activate,
 *   cursor_object, window_stack entries, chain members, file selector
 *   rows) that lies outside the object table counts as 0, "none"; a
 *   text_index outside the text records means "no text".
 * - Table sizes: the loader keeps the sizes of its tables, spare records
 *   included, in their unused record 0 (vel_object.reserved,
 *   vel_text_rec.reserved).  A table that the application allocates itself
 *   may leave record 0 zeroed: it then counts as object_count + 1 object
 *   records (objects 1..object_count) and text_count + 1 text records; give
 *   such text tables text_count + 2 line buffers, the last one zeroed, as
 *   the loader does (formatting may step from line 39 of the last buffer
 *   into the next).
 * - Counts in the context never reach past their arrays (window_count 100,
 *   dir_last 99, object_count the table).
 * - Walks up master chains stop after as many steps as the table has
 *   records (only a cycle is that long) and take no stack.
 * - Walks over dependents (drawing, hit testing, moving, scrolling, cursor
 *   search) visit at most that many entries in all and skip an entry naming
 *   an object whose dependents they are already walking, so cycles and
 *   objects listed many times end quickly; they descend at most
 *   VEL_MAX_NESTING levels below the object they start from: dependents
 *   nested deeper are left out, so no tree overflows the stack.
 * - Pixels outside the display surface are never written.
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

/* The text cache (vel_context.text_cache_limit): rendered text lines kept
 * for the next redraw (three quarters of the limit) and the widths that
 * formatting measures (one quarter), least recently used out first. */
enum {
    VEL_TEXT_CACHE_DEFAULT_LIMIT = 4 << 20, /* 4 MiB, the limit when the field is 0 */
    VEL_TEXT_CACHE_OFF = 1                  /* no line fits: every line is rendered anew */
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

/* The library's cache of rendered text lines; opaque to applications. */
typedef struct vel_text_cache vel_text_cache;

/* The one state record.  The application zero-fills it, sets the display
 * fields and hands it to every function.  The two application spaces
 * (app_fields_a, app_fields_b, VEL_APP_FIELDS words each) are never read
 * or written by the library. */
typedef struct vel_context {
    SDL_Event event;           /* event last fetched by the input loops */
    TTF_Font *font;            /* default font (font_choice 0) */
    SDL_Surface *screen;       /* display surface; all drawing goes here */
    SDL_Surface *text_surface; /* the text line painted last (a reference of its own) */
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
    vel_text_cache *text_cache;     /* rendered lines and measured widths; made by
                                       painting and formatting, freed by
                                       vel_clear_text_cache; null in a zeroed context */
    uint32_t text_cache_limit;      /* bytes the cache holds at most, lines and their
                                       bookkeeping; 0: VEL_TEXT_CACHE_DEFAULT_LIMIT */
} vel_context;

/* ========================================================================
 * Function reference
 *
 * Every function is described in the same layout:
 *   name: what it does.
 *   Parameters: what the arguments mean (ctx, the context, is left out).
 *   Writes: the record and context fields it changes.
 *   Result: what it returns.
 *   Oddities: deliberate departures from the obvious, kept on purpose.
 * "none" stands where a heading has nothing to say.
 * ======================================================================== */

/* ========================================================================
 * Start-up and shutdown
 * ======================================================================== */

/** vel_start_velumo: loads the form description file and, when any loaded
 * object has a text, the text file; opens the objects' pictures and fonts.
 * Parameters: extra_objs, extra_texts: spare records, zeroed, made behind
 *   the loaded ones for objects and texts the application adds at run time;
 *   form_path, text_path: the two files, opened with mode "r+b".
 * Writes: object_count, objects, text_count, text_recs, text_bufs;
 *   mark_colour = mark_colour_a for VEL_FRAME_MODE_RESIZE, mark_colour_b for
 *   VEL_FRAME_MODE_SCROLL, unchanged for other modes; objects[0].reserved =
 *   object_count + extra_objs + 1 and, when texts are loaded,
 *   text_recs[0].reserved = text_count + extra_texts + 1 (the line buffers
 *   are one more): every range check reads the table sizes there.
 * Result: none.
 * Oddities: a form file that cannot be opened prints "Can't open file." and
 *   ends the process with status 0; a needed text file that cannot be
 *   opened prints "Can't open file !" and a blank line and ends it with
 *   status 0; a table that cannot be allocated ends it with status 1 (use
 *   vel_load_form for an error result instead).  Record k of the form file
 *   becomes object k + 1; `hidden` is taken only for nonzero types that are
 *   top level or menus; dep_objs only when the first entry is nonzero;
 *   trailing bytes short of a whole record are ignored.  A string without a
 *   NUL inside its field is cut at 67 characters, a text without a NUL in
 *   its 1000 bytes at 999.  One spare line buffer, zeroed, lies behind the
 *   block so that the step from a last buffer's line 39 into "line 40"
 *   stays inside the allocation.  Malformed records are reported once each,
 *   one line per record and field on standard output, and loading goes on
 *   with the guarded value:
 *     "velumo: object N: master is the object itself, set to 0"
 *     "velumo: object N: master M is outside the table, set to 0"
 *     "velumo: object N: dep_objs entry D is outside the table, set to 0"
 *       (every such entry becomes 0; the first one is named)
 *     "velumo: object N: text_index T is outside the text records, set to 0"
 *     "velumo: object N: master chain runs in a cycle" (for each object on it)
 *     "velumo: object N: dep_objs entry D closes a cycle" (N lies below D)
 *   A master set to 0 makes the object top level, also for the hidden rule.
 *   Cycles are left as they are: the walks stop on them.  A number is
 *   outside the table when it is at least objects[0].reserved, so spare
 *   records are valid targets.  A valid form prints none of these lines. */
void vel_start_velumo(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path);

/** vel_load_form: vel_start_velumo for tools and careful applications: the
 * same loading, but the files are opened read-only (a form installed
 * system-wide loads for every user) and nothing ends the process.
 * Parameters: as vel_start_velumo.
 * Writes: as vel_start_velumo; on -1 nothing is left allocated.
 * Result: 1 loaded; -1 when a needed file could not be opened (after
 *   printing the same quoted message) or a table could not be allocated.
 * Oddities: both entry points also write to standard error: one line
 *   naming a file that cannot be opened and the reason ("velumo: cannot
 *   open form file 'PATH': No such file or directory"), one when memory
 *   runs out, and a warning for a form or text file that holds no whole
 *   record or ends in bytes that are no whole record. */
int32_t vel_load_form(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path);

/** vel_load_object_images: loads the picture of every type-4 object with
 * IMG_Load.
 * Parameters: first: the first object tried (0 stands for 1), up to
 *   object_count.
 * Writes: of each picture loaded: image, width and height (the picture's
 *   size) and type, which becomes 9.
 * Result: 0 when no picture was tried, else that of the last one tried: 1
 *   loaded, -1 failed.
 * Oddities: earlier failures are not reported in the result. */
int32_t vel_load_object_images(vel_context *ctx, uint32_t first);

/** vel_load_object_fonts: opens own_font for every object with font_choice
 * VEL_FONT_OWN, from font_path at font_size.
 * Parameters: first: the first object tried (0 stands for 1), up to
 *   object_count.
 * Writes: own_font; null after a failure; the text cache is cleared when
 *   a font is closed to be opened again.
 * Result: 0 when no font was tried, else that of the last one: 1 opened, -1
 *   failed.
 * Oddities: a failure prints "TTF_OpenFont: <SDL error>". */
int32_t vel_load_object_fonts(vel_context *ctx, uint32_t first);

/** vel_unload_form: releases the form that vel_load_form or
 * vel_start_velumo loaded, and nothing else: the display, the context font
 * and SDL stay, so another form can be loaded into the same context.
 * Parameters: none.
 * Writes: closes the own fonts and frees the pictures of objects
 *   1..object_count, clears the text cache, frees text records and line buffers when texts_loaded
 *   is 1 (text_count becomes 0) and the object table; object_count,
 *   active_window, window_to_activate, cursor_object and window_count
 *   become 0, since they name objects that are gone; every pointer it frees
 *   becomes null.
 * Result: none.
 * Oddities: with texts_loaded 0 the text memory stays allocated and its
 *   pointers stay set. */
void vel_unload_form(vel_context *ctx);

/** vel_clear_text_cache: frees the text cache with every line it holds.
 * Painting keeps each rendered line, keyed by its font (the TTF_Font
 * pointer with its height, style, outline, hinting and kerning), text and
 * colour; the next painting of the same line blits the kept surface, pixel
 * for pixel what rendering it again gives.  Formatting keeps the widths it
 * measures, keyed the same way without the colour.  The library clears the
 * cache itself wherever it closes fonts (vel_load_object_fonts,
 * vel_unload_form, vel_close).  An application that closes a font the
 * library has painted or measured with (the context font, an own_font of
 * an object it made) calls this
 * function before opening the next font: a new font may be given the
 * closed one's address.
 * Parameters: none.
 * Writes: text_cache becomes null; text_cache_limit stays.
 * Result: none.
 * Oddities: the cached surfaces are not tied to the screen's format: a
 *   line is blitted onto the screen as it was rendered, at any depth. */
void vel_clear_text_cache(vel_context *ctx);

/** vel_close: closes the context font, frees text_surface, the text cache
 * and screen, releases the form as vel_unload_form does, then quits SDL_ttf and SDL.
 * Parameters: none.
 * Writes: every pointer it frees becomes null, so nothing is freed twice.
 * Result: none.
 * Oddities: none. */
void vel_close(vel_context *ctx);

/* ========================================================================
 * String and number helpers (no context)
 * ======================================================================== */

/** vel_strcmp: compares two strings position by position.
 * Parameters: a, b: the strings; n: the compared positions run 0..n.
 * Writes: nothing.
 * Result: 0 when nothing was compared and the counter reached n (n = 0
 *   always); 1 equal, 2 different.
 * Oddities: when the compared positions reach n, only the LAST compared
 *   position decides (an earlier difference is forgotten); when a string
 *   ends before n, 2 if a goes on, 1 if b ended too, else 2 -- so two
 *   strings of the same length shorter than n count as equal. */
uint32_t vel_strcmp(const char *a, const char *b, uint32_t n);

/** vel_count_string_size_without_zero: the length of a string.
 * Parameters: s: a NUL-terminated string.
 * Writes: nothing.
 * Result: the number of characters before the NUL.
 * Oddities: none. */
uint32_t vel_count_string_size_without_zero(const char *s);

/** vel_get_lastposition: the length of a string, as
 * vel_count_string_size_without_zero.
 * Parameters: s: a NUL-terminated string.
 * Writes: nothing.
 * Result: the number of characters before the NUL.
 * Oddities: the name promises the last position; it is the length. */
uint32_t vel_get_lastposition(const char *s);

/** vel_get_lastposition_before_zero: the index of a string's last character.
 * Parameters: s: a NUL-terminated string.
 * Writes: nothing.
 * Result: length - 1.
 * Oddities: 0xFFFFFFFF for "". */
uint32_t vel_get_lastposition_before_zero(const char *s);

/** vel_copy_st_first_part: copies the start of a string.
 * Parameters: n: at most n + 1 characters are copied; src, dst.
 * Writes: dst: the characters and a NUL.
 * Result: none.
 * Oddities: n = 0 copies one character. */
void vel_copy_st_first_part(uint32_t n, const char *src, char *dst);

/** vel_copy_st_last_part: copies a whole string.
 * Parameters: src, dst.
 * Writes: dst: the first byte unconditionally, then bytes while the next one
 *   is nonzero, then a NUL.
 * Result: the bytes copied, the NUL not counted.
 * Oddities: an empty source copies its terminator only and returns 1; it
 *   never reads past the NUL. */
uint32_t vel_copy_st_last_part(const char *src, char *dst);

/** vel_transform_int_to_asccii: the character of one decimal digit.
 * Parameters: digit: 0..9; dst: where the character goes.
 * Writes: dst[0]; no terminator.
 * Result: 1; -1 for any other digit, which stores '0'.
 * Oddities: none. */
int32_t vel_transform_int_to_asccii(int32_t digit, char *dst);

/** vel_transform_ascii_to_int: the value of one digit character.
 * Parameters: dst: where the value goes; c: the character.
 * Writes: *dst.
 * Result: 1; -1 for any other character, which stores 0.
 * Oddities: the (destination, source) order is the reverse of
 *   vel_transform_int_to_asccii. */
int32_t vel_transform_ascii_to_int(uint32_t *dst, const char *c);

/** vel_transform_str_to_num: reads a decimal number.
 * Parameters: s: the digits; out: where the number goes.
 * Writes: *out.
 * Result: none.
 * Oddities: at most nine digits: a string whose first ten bytes hold no NUL
 *   is cut to its first nine characters.  Non-digits count as 0 ("12a4" is
 *   1204).  An empty string stores 0. */
void vel_transform_str_to_num(const char *s, uint32_t *out);

/** vel_transform_num_to_str: writes a number in decimal.
 * Parameters: value: the number; dst: 11 bytes.
 * Writes: dst: the digits and a NUL.
 * Result: the digit count.
 * Oddities: the count is taken in single precision, so values whose float
 *   image rounds up to a power of ten get one digit more (99999999 becomes
 *   "999999999"); values from 2^31 up write only the NUL at dst[10] and
 *   return 10. */
int32_t vel_transform_num_to_str(const uint32_t *value, char *dst);

/** vel_zehnerpotenz: 10 to the power e.
 * Parameters: e: the exponent.
 * Writes: nothing.
 * Result: 10^e, wrapping in 32 bits.
 * Oddities: e = 0 also gives 10. */
uint32_t vel_zehnerpotenz(uint32_t e);

/* ========================================================================
 * Rendering: primitives, geometry and clipping, object painting, borders
 * ======================================================================== */

/** vel_lock: locks a surface when SDL requires it for direct pixel access:
 * a nonzero offset, or a hardware, asynchronous-blit or RLE surface.
 * Parameters: surface: the surface.
 * Writes: nothing of the library's.
 * Result: none.
 * Oddities: none. */
void vel_lock(SDL_Surface *surface);

/** vel_unlock: unlocks a surface under the same condition as vel_lock.
 * Parameters: surface: the surface.
 * Writes: nothing of the library's.
 * Result: none.
 * Oddities: none. */
void vel_unlock(SDL_Surface *surface);

/** vel_draw_pixel: writes one pixel straight into ctx->screen at 1, 2 or 4
 * bytes per pixel; the colour is mapped with SDL_MapRGB on every call.
 * Parameters: x, y: the pixel; r, g, b: the colour.
 * Writes: the pixel.
 * Result: none.
 * Oddities: a 3-byte screen prints the line "24 bit is not supported ! ",
 *   any other depth "Error - can't get color depth. ", once per pixel asked
 *   for, and writes nothing.  A pixel outside the surface is dropped (after
 *   the depth messages).  It takes no lock: callers lock around whole
 *   outlines. */
void vel_draw_pixel(vel_context *ctx, uint32_t x, uint32_t y, uint8_t r, uint8_t g, uint8_t b);

/** vel_draw_line: draws a horizontal or vertical line, both end points
 * included, through vel_draw_pixel.
 * Parameters: x1, y1: the first end; x2, y2: the last; r, g, b: the colour.
 * Writes: the pixels.
 * Result: none.
 * Oddities: a line whose end points are equal, or a slanted line, draws
 *   nothing.  The direction follows the signed differences x1 - x2 and
 *   y1 - y2; the running coordinate is compared unsigned with the end, and a
 *   run falling to 0 stops after drawing 0.  The run is cut to the surface
 *   before any pixel is asked for, so a line reaching far beyond the screen
 *   (an object right of its edge has a wrapped, huge cut width) costs no
 *   more than one across it; on an unsupported depth the messages count
 *   only the pixels on the surface. */
void vel_draw_line(vel_context *ctx, uint32_t x1, uint32_t y1, uint32_t x2, uint32_t y2, uint8_t r,
                   uint8_t g, uint8_t b);

/** vel_draw_box: fills a box with SDL_FillRect at any depth.
 * Parameters: x, y: the top left corner; w, h: the size; r, g, b: the colour.
 * Writes: the pixels, clipped to the surface by SDL.
 * Result: none.
 * Oddities: the values are stored into the 16-bit fields of an SDL_Rect
 *   (higher bits dropped).  No lock is taken. */
void vel_draw_box(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                  uint8_t g, uint8_t b);

/** vel_draw_rectangle: outlines a rectangle's outermost pixels under
 * vel_lock: top, right, bottom and left edge in that order.
 * Parameters: x, y: the top left corner; w, h: the size; r, g, b: the colour.
 * Writes: the pixels.
 * Result: none.
 * Oddities: corners are drawn twice.  A width of 1 shows only the two
 *   vertical edges (the horizontal ones are single points, which
 *   vel_draw_line does not draw); a height of 1 only the horizontal. */
void vel_draw_rectangle(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                        uint8_t g, uint8_t b);

/** vel_p_cutted_w_independent: the usable width of a top-level object.
 * Parameters: obj: the object.
 * Writes: nothing.
 * Result: screen_width - x - 2 when x + width - 1 lies beyond screen_width
 *   (unsigned), else its width.
 * Oddities: an object starting right of the screen gets a wrapped, huge
 *   width. */
uint32_t vel_p_cutted_w_independent(vel_context *ctx, uint32_t obj);

/** vel_p_cutted_h_independent: the usable height of a top-level object.
 * Parameters: obj: the object.
 * Writes: nothing.
 * Result: screen_height - y - 5 when y + height - 1 lies beyond
 *   screen_height, else its height.
 * Oddities: five rows are kept free at the bottom against two columns at
 *   the right. */
uint32_t vel_p_cutted_h_independent(vel_context *ctx, uint32_t obj);

/** vel_p_cutted_w_dependent: the usable width of a dependent inside its
 * master.
 * Parameters: obj: the object; it must have a master.
 * Writes: nothing.
 * Result: with limit = master x + master width - 1 - margin_right, the
 *   master's width being its own dependent width when it has a master,
 *   else its cut width: limit - (x + 1) when the object's right edge
 *   reaches the limit (signed), else its width.
 * Oddities: a master chain longer than the object table (a cycle) is
 *   followed that far and its last master taken as the root; the height
 *   does the same. */
uint32_t vel_p_cutted_w_dependent(vel_context *ctx, uint32_t obj);

/** vel_p_cutted_h_dependent: the usable height of a dependent, as the width.
 * Parameters: obj: the object; it must have a master.
 * Writes: nothing.
 * Result: as vel_p_cutted_w_dependent with y, height and margin_bottom.
 * Oddities: it looks one level further up than the width: the master's
 *   height is the dependent height of the master's master when that exists,
 *   else the master's cut height. */
uint32_t vel_p_cutted_h_dependent(vel_context *ctx, uint32_t obj);

/** vel_search_master: the root of obj's master chain, the ancestor without
 * a master.
 * Parameters: obj: the object.
 * Writes: nothing.
 * Result: the root; 0 for a top-level object.
 * Oddities: on a cycle in the master links the walk stops at an object of
 *   the cycle and returns it, so callers' walks to the root end. */
uint32_t vel_search_master(vel_context *ctx, uint32_t obj);

/** vel_get_borders_for_dep_object: the exclusive limits a dependent may use:
 * pixels strictly between left and right, top and bottom.
 * Parameters: obj: the object; it must have a master; left, right, top,
 *   bottom: where the limits go.
 * Writes: *left, *right, *top, *bottom.
 * Result: none.
 * Oddities: directly inside the root, VEL_CLIP_MARGINS gives the root's
 *   inner area, VEL_CLIP_FRAME its whole rectangle, any other value no
 *   limit (0) from the rectangle; a side cut by the screen ends at the cut
 *   without its margin.  Deeper chains narrow the limits level by level up
 *   to the root, each master's frame taken one pixel up and left of its
 *   record.  Limits left of or above the screen come out as wrapped
 *   negative values (compare them signed). */
void vel_get_borders_for_dep_object(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                                    uint32_t *top, uint32_t *bottom);

/** vel_get_borders_for_text: the exclusive limits of obj's text area.
 * Parameters: obj: the object; left, right, top, bottom: where the limits go.
 * Writes: *left, *right, *top, *bottom.
 * Result: none.
 * Oddities: the inner area lies inside the cut rectangle of a top-level
 *   object and inside the record's rectangle of a dependent, which is
 *   further narrowed to the limits of vel_get_borders_for_dep_object
 *   (signed comparisons). */
void vel_get_borders_for_text(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                              uint32_t *top, uint32_t *bottom);

/** vel_evoke_object: paints one object: body, text, then vel_evoke_borders.
 * Parameters: obj: the object.
 * Writes: a top-level window at x <= 10 or y <= 24 (signed) is moved to
 *   x = 11, y = 25; a kind-1 window with centred 1 gets scroll_x set so each
 *   line is centred in its text area; each painted line replaces
 *   ctx->text_surface, the previous surface freed first.  Lines are taken
 *   from the text cache when it holds them and kept there when they are
 *   rendered; ctx->text_surface then holds a reference of its own to the
 *   cached surface, so it stays valid and is freed with SDL_FreeSurface as
 *   before.
 * Result: none.
 * Oddities:
 * - Body: top level a box of its cut size (16 x 16 for objects 1..7) or,
 *   for type 9, the whole picture; a dependent of types 1..9 the part inside
 *   its masters' limits (box, or the matching cut of the picture; nothing
 *   when it lies wholly outside).  Type 4 has no body; type 0 and codes of
 *   10 or more have a body only at top level.
 * - Text: lines 0..number_of_lines (at most 40) of the line buffer for
 *   windows and text areas with a non-empty text record and for chain
 *   members whose first line is non-empty; the caption `label` of types 2,
 *   5 and 6, painted once at the first visible line position.  Each line is
 *   clipped to the text limits.  The first line counts one row taller than
 *   the later ones, and a line cut on both sides shows one pixel less than
 *   the limits admit and keeps the source x of the line before it.
 * - No text is painted with a font_choice other than VEL_FONT_DEFAULT or
 *   VEL_FONT_OWN, or when the chosen font is null.
 * - No refresh. */
void vel_evoke_object(vel_context *ctx, uint32_t obj);

/** vel_evoke_borders: draws obj's border in the border colour under
 * vel_lock/vel_unlock.
 * Parameters: obj: the object.
 * Writes: the pixels.
 * Result: none.
 * Oddities: VEL_BORDER_FRAME and VEL_BORDER_FITTED_FRAME draw a frame
 *   border_inset + 1 pixels outside the inner area; VEL_BORDER_SHADOW and
 *   VEL_BORDER_FITTED_SHADOW the outline shifted right and down by
 *   border_inset (a shadow); the other styles nothing.  Each of the four
 *   lines is clipped to screen_rect (top level: strictly between x and
 *   x + w - 1, y and y + h - 1) or to the dependent's limits, and is left out
 *   when its own position is outside them.  VEL_BORDER_NONE skips the lock
 *   but still unlocks. */
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
 * the object's font (VEL_FONT_DEFAULT the context font, VEL_FONT_OWN
 * own_font); an object without a font measures every string as 0 pixels
 * wide.
 *
 * The steps from line 39 into the slots behind a buffer are not bounded by
 * the formatter: they rely on the spare line buffer vel_start_velumo keeps
 * behind the block, so even the last buffer's line 40 lies inside the
 * allocation.  Line buffers set up by the application need the same spare,
 * and the number of text records in text_recs[0].reserved.  An object whose
 * text_index lies outside the text records is formatted and painted as one
 * without text; without text tables nothing reads or writes text memory.
 * ======================================================================== */

/** vel_format_object_text: breaks the text of a window (type 1) or text
 * object (type 3) with a text record into the lines of its line buffer.
 * Parameters: obj: the object.
 * Writes: the line buffer (all 40 lines are cleared first), number_of_lines;
 *   a line_width of 0 is first set to right - left - 1 of the text area
 *   (vel_get_borders_for_text) and kept.
 * Result: the index of the last line written; 0 for other types and
 *   text_index 0, which change nothing; 0 for an empty text, which sets
 *   line_width, clears the lines and leaves number_of_lines as it was.
 * Oddities: text that needs a 41st line is cut there; a word that goes to a
 *   new line from line 39 lands in line slot 40 and 40 is returned.  A space
 *   that makes a line too wide starts the next line.  A word split over
 *   lines by vel_copy_word_into_line stays in the word buffer and is placed
 *   again, joined to the next word.  A record without a NUL in its 1000
 *   bytes is read as cut at 999 characters. */
uint32_t vel_format_object_text(vel_context *ctx, uint32_t obj);

/** vel_copy_word_into_line: places a word into obj's line buffer and moves
 * line and column on.
 * Parameters: obj: the object; word: the word, NUL-terminated at
 *   word_length; line, column: where it goes, moved on; word_length: its
 *   characters, never changed; break_after: 1 = end the line behind it.
 * Writes: the line buffer, *line, *column; a line_width of 0 is first set to
 *   width - (margin_right + margin_left).
 * Result: 0 after cases 1 and 2 of vel_check_line_volume (1 appends the
 *   word; 2 ends the line and puts the word at the start of the next one);
 *   in case 3 it is split character by character, measuring the line after
 *   each one, a character that does not fit starting the next line: 1 when
 *   the last character was kept, -1 when the lines ran out (at line 39, or
 *   after a line full to column 99 was continued into slot 40).
 * Oddities: case 2 does not test for line 39.  After cases 1 and 2 the line
 *   is ended and the next one started (NUL at its start) when break_after is
 *   1 or the column reached 99.  Guard: a *column above 99, or a *line and
 *   word that could lead to writes past line slot 79 (two lines on), return
 *   -1 and change nothing. */
int32_t vel_copy_word_into_line(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                                uint32_t *column, uint32_t *word_length, uint32_t break_after);

/** vel_check_line_volume: the fitting test of a word on a line of obj's
 * line buffer.
 * Parameters: obj: the object; word: the word; line, column: where it would
 *   go; word_length: its characters.
 * Writes: nothing.
 * Result: 1 when word_length <= 98 - *column and the word's width is at
 *   most line_width minus the line's width; else 2 when word_length <= 98
 *   and the word is at most line_width wide; else 3.
 * Oddities: 98 - *column is unsigned, so a column of 99 wraps round and
 *   counts as room.  line_width minus the line's width is read as signed 32
 *   bits, so a line_width above 2^31 (margins wider than the object) never
 *   gives case 1.  A *line above 79 returns 3. */
uint32_t vel_check_line_volume(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                               uint32_t *column, uint32_t *word_length);

/** vel_format_small_obj: prepares the caption (label) of a one-line object.
 * Parameters: obj: the object.
 * Writes: the label, cut at its first line feed; of a button (type 2)
 *   margin_left = (width - caption width) / 2 and margin_top = (height -
 *   caption height) / 2, each only where at least 3 pixels are spare.
 * Result: 0 for an empty label; for a button 1 when margin_left was set, 2
 *   when margin_top was (overriding 1), 0 for neither; 3 for types 5 and 6;
 *   0 for all others, unchanged.
 * Oddities: the caption is not translated for umlauts. */
uint32_t vel_format_small_obj(vel_context *ctx, uint32_t obj);

/** vel_format_stream_to_linked_objects: flows the stream of a chain master
 * (type 8) through its chain members: dep_objs[0], [1], ... as long as the
 * entry is a type-8 object with a text record (at most 100).
 * Parameters: master: the chain master.
 * Writes: the members' line buffers and number_of_lines; the first
 *   member's line_width of 0 is set from its text area, the others' in
 *   vel_copy_word_big.
 * Result: the line index reached in the last member used; 0 and nothing
 *   done when the master is not type 8, has no stream, its first entry is
 *   no member, or the stream is empty.
 * Oddities: lines break as in vel_format_object_text; when a member's 40
 *   lines are full the text goes on in line 0 of the next member, and the
 *   end of the chain cuts the rest.  Lines are not cleared beforehand.  The
 *   flow keeps its own current member, changed only by its own moves (a
 *   space or a full line on line 39); spaces are measured with, and the
 *   final line index stored into, that member even after vel_copy_word_big
 *   moved on, and its next move, sharing the chain position, stores the
 *   line index into it and lands behind the member in use.  A line feed
 *   with no word pending goes to the next line without testing for line
 *   39; consecutive ones go on into the slots behind the member's buffer,
 *   up to slot 79 (the last line of the buffer behind), where further line
 *   feeds stay.  A space that arrives on a line above 39 is dropped.
 *   vel_copy_word_big may print debug lines on standard output. */
uint32_t vel_format_stream_to_linked_objects(vel_context *ctx, uint32_t master);

/** vel_copy_word_big: places a word for a chain master's flow in member
 * dep_objs[*chain_position], moving to further members where a line break
 * falls on line 39 or below.
 * Parameters: master: the chain master; chain_position, text_index: the
 *   member in use and its text buffer, moved on; word, word_length: the
 *   word; line, column: where it goes, moved on; break_after: 1 = end the
 *   line behind it.
 * Writes: the line buffers, *chain_position, *text_index, *line, *column;
 *   *word_length = 0 when the word was placed; the member's line_width of 0
 *   is first set to width - (margin_right + margin_left).
 * Result: -1 the chain has ended (the flow stops); 0 placed; 1 placed on the
 *   current line without a break, or placed after a move.
 * Oddities: when a word needs the next line on line 39 and there is no next
 *   member, it is not placed and keeps its length.  A word wider than a
 *   line is split character by character and its terminating NUL is copied
 *   too, as one more character: whatever later joins that line stands
 *   behind the embedded NUL and is neither measured nor painted.  A split
 *   word followed by a line break on line 39 prints "1142 next chain \n "
 *   with puts, then " next chain: %d \n \n" with the move's result and, if
 *   the move failed, "1153 object %d number_of_lines %d \n \n" with the
 *   member variable as the failed move left it (the entry that ended the
 *   chain, 0 past the list's end) and the line index stored into that
 *   object.  The split path treats line indexes above 39 like 39.  A
 *   *chain_position above 99 returns -1 at once, and so does a context
 *   without text tables, a *column above 99, and a *line and word that
 *   could lead to writes past line slot 79; a *text_index outside the text
 *   records is set to 0 first. */
int32_t vel_copy_word_big(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                          uint32_t *text_index, const char *word, uint32_t *line, uint32_t *column,
                          uint32_t *word_length, uint32_t break_after);

/** vel_go_to_next_chainmember: moves a chain flow to its next member.
 * Parameters: master: the chain master; chain_position, member,
 *   text_index, line, column: the flow's place, moved on.
 * Writes: number_of_lines of *member = *line; *chain_position + 1; *member
 *   and *text_index, overwritten before they are tested; on success *line
 *   and *column 0 and line 0 of the new member's buffer cleared.
 * Result: 0 moved; 1 the chain has ended: the position passes 99, or the
 *   entry is 0, not of type 8 or has text_index 0.
 * Oddities: the new member's line_width is not initialised here. */
int32_t vel_go_to_next_chainmember(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                                   uint32_t *member, uint32_t *text_index, uint32_t *line,
                                   uint32_t *column);

/** vel_load_window_text: replaces the text of obj's text record and
 * formats it.
 * Parameters: obj: the object; text: 1 to 999 characters.
 * Writes: lines 0..number_of_lines of the old text are cleared first; the
 *   record's text; what vel_format_object_text writes.
 * Result: that of vel_format_object_text.
 * Oddities: a longer text is cut at 999 characters.  cursor_index is left
 *   alone (see vel_reset_textobject).  With text_index 0 (or one outside the
 *   text records) the text goes into the unused record 0 and 0 is returned;
 *   without text tables nothing is stored. */
uint32_t vel_load_window_text(vel_context *ctx, uint32_t obj, const char *text);

/** vel_load_window_text_buttons: vel_load_window_text, then
 * vel_format_small_obj of two buttons.
 * Parameters: obj, text: as vel_load_window_text; button_a, button_b: the
 *   buttons.
 * Writes: what those functions write.
 * Result: that of vel_format_small_obj of button_b.
 * Oddities: none. */
uint32_t vel_load_window_text_buttons(vel_context *ctx, uint32_t obj, const char *text,
                                      uint32_t button_a, uint32_t button_b);

/** vel_reset_textobject: puts the text cursor to the top left of obj's text
 * area.
 * Parameters: mode: 0 one-line object, 1 text object, other: neither;
 *   obj: the object.
 * Writes: cursor_line and cursor_column 0, cursor_x = x + margin_left,
 *   cursor_y = y + margin_top; mode 0 also text_length = the label's length;
 *   mode 1 text_length = the length of its record's text and that record's
 *   cursor_index = 0.
 * Result: none.
 * Oddities: mode 1 uses record 0 for a text_index outside the text records
 *   and sets text_length 0 without text tables; other modes leave
 *   text_length. */
void vel_reset_textobject(vel_context *ctx, uint32_t mode, uint32_t obj);

/** vel_fill_form_with_dummies: right-aligns obj's label in a field,
 * filling the left with a fill character.
 * Parameters: string: gives the length (normally the label itself); obj:
 *   the object; field_length: the field's characters; fill_char: the fill.
 * Writes: the label; text_length = field_length.
 * Result: field_length; the string's length when that is field_length or
 *   more (nothing changes); 0 when field_length is above 67 (the field does
 *   not fit the label; nothing changes).
 * Oddities: an empty string fills the whole field. */
uint32_t vel_fill_form_with_dummies(vel_context *ctx, const char *string, uint32_t obj,
                                    uint32_t field_length, char fill_char);

/** vel_read_external_stream: reads a whole file into a new buffer, for use
 * as a chain master's stream.
 * Parameters: path: the file.
 * Writes: nothing of the context.
 * Result: the buffer, which the caller frees with free: the file's bytes
 *   and one NUL behind them, so always a terminated string (cut at the
 *   file's first NUL, if it has one); an empty file gives an empty string.
 *   Null for a missing file, one that may not be written, and a buffer that
 *   cannot be allocated (with a line on standard error).
 * Oddities: the file is opened with mode "r+b" first to take its size, so
 *   a file that may not be written gives null. */
char *vel_read_external_stream(const char *path);

/* ========================================================================
 * Scene drawing, selection marks, text cursor
 *
 * An object is drawn by the scene when it is not hidden and has a nonzero
 * width and height.  The text cursor is drawn for cursor_object after it is
 * painted, when its type is 1, 3, 5, 6 or 8 (vel_draw_selected_window
 * leaves out the type test).  None of these functions refreshes the display
 * unless its entry says so.
 * ======================================================================== */

/** vel_draw_all_objects: redraws the whole screen, in this order: the
 * format pass (when asked), the desktop, the background windows, the active
 * window with its marks, cursor and dependents, the frame buttons.
 * Parameters: format_first: 1 = first format the text of every object
 *   1..object_count of nonzero size, hidden or not (types 1 and 3 with
 *   vel_format_object_text, 2, 5 and 6 with vel_format_small_obj, a type 8
 *   without a master with vel_format_stream_to_linked_objects), any other
 *   value = no formatting; refresh: 1 = hand screen_rect, cut to the display
 *   surface, to SDL_UpdateRects at the end, any other value = no refresh.
 * Writes: what the formatting and painting write (vel_evoke_object), and
 *   the position, size and hidden flag of dependents (vel_switch_dep_object).
 * Result: always 1.
 * Oddities: the desktop is the objects 8..object_count without a master
 *   that are drawn and not of type 0, 1 or 3, each painted with its cursor
 *   and then its dependents: a top-level text area (type 3) is never
 *   painted, and top-level windows come only from the stack.  Background
 *   windows are the stack entries from window_count - 1 down to 1 (bottom
 *   of the stack up), each of type 1, drawn and not active_window, painted
 *   with its dependents, without marks or cursor.  The active window is
 *   painted only when stack entry 0 is nonzero and it is not hidden (its
 *   size is not tested), followed by vel_draw_selected_box,
 *   vel_draw_selected_lines, its cursor and its dependents.  Frame buttons
 *   1..7 (up to object_count) are painted unless hidden. */
uint32_t vel_draw_all_objects(vel_context *ctx, uint32_t format_first, uint32_t refresh);

/** vel_draw_dep_objs: paints obj's dependents, depth first in list order.
 * Parameters: obj: the master.
 * Writes: through vel_switch_dep_object, the position, size and hidden flag
 *   of the dependents; what painting writes.
 * Result: none.
 * Oddities: when obj's first dep_objs entry is nonzero, vel_switch_dep_object
 *   fits and hides its dependents first.  Each dependent that is then drawn
 *   is painted, gets its cursor, and has its own dependents drawn right
 *   after it, before its next sibling; a hidden or empty dependent's
 *   dependents are not reached. */
void vel_draw_dep_objs(vel_context *ctx, uint32_t obj);

/** vel_switch_dep_object: fits master's dependents to it and decides which
 * of them are visible, for each dependent d in list order.
 * Parameters: master: the master (a number outside the table counts as 0).
 * Writes: x, y, width and height of fitted dependents; hidden of every
 *   dependent of nonzero size that is not a menu.
 * Result: none.
 * Oddities: a dependent of VEL_BORDER_FITTED, VEL_BORDER_FITTED_FRAME or
 *   VEL_BORDER_FITTED_SHADOW (when master is not 0) covers the master's
 *   inner area widened by the master's border_inset b on every side:
 *   x = m.x + m.margin_left - b, y = m.y + m.margin_top - b, width = m.width -
 *   m.margin_left - m.margin_right + 2b, height likewise; the master's record
 *   size is used, not its cut size.  Then hidden becomes 0 when d's edges
 *   (x .. x + width - 1, y .. y + height - 1) overlap the limits of
 *   vel_get_borders_for_dep_object both across and down, 1 otherwise; a run
 *   overlaps when one end lies strictly inside the limits or it reaches
 *   both of them.  All comparisons are signed.  Menus (type 7) keep their
 *   own hidden flag, and so do dependents of width or height 0. */
void vel_switch_dep_object(vel_context *ctx, uint32_t master);

/** vel_draw_selected_window: paints the active window alone: the window,
 * its cursor when it is cursor_object, its dependents, then the frame
 * buttons 1..7 (up to object_count) that are not hidden.
 * Parameters: none.
 * Writes: what painting and vel_draw_dep_objs write.
 * Result: none.
 * Oddities: the cursor is drawn without the type test of the other scene
 *   passes.  No format pass, no selection marks, no refresh.  Without an
 *   active window only the frame buttons are painted. */
void vel_draw_selected_window(vel_context *ctx);

/** vel_draw_and_screenup_selected_window: vel_draw_selected_window, then
 * SDL_UpdateRects with the active window's rectangle.
 * Parameters: none.
 * Writes: as vel_draw_selected_window.
 * Result: none.
 * Oddities: the rectangle is x, y, cut width, cut height of the active
 *   window, cut to screen_width x screen_height and to the display surface;
 *   the frame buttons above the window are not refreshed.  Without an
 *   active window it is the rectangle of the unused record 0. */
void vel_draw_and_screenup_selected_window(vel_context *ctx);

/** vel_undraw_object: erases an object by filling its rectangle with
 * background_colour.
 * Parameters: obj: the object.
 * Writes: a window without a master is first clamped as painting does:
 *   x <= 10 becomes 11, y <= 24 becomes 25 (signed).
 * Result: none.
 * Oddities: the record's full width and height are filled, not the cut
 *   ones (SDL clips the fill to the surface); border lines outside the
 *   rectangle (the shadow styles) stay.  No refresh. */
void vel_undraw_object(vel_context *ctx, uint32_t obj);

/** vel_draw_selected_lines: draws the selection outline of a window in
 * mark_colour: vel_draw_rectangle(x - 1, y - 1, cut width + 2, cut height +
 * 2), one pixel outside its cut rectangle.
 * Parameters: win: the window.
 * Writes: first, whatever the object's type, x <= 10 becomes 11 and y <= 0
 *   becomes 2 (signed).
 * Result: none.
 * Oddities: the vertical limit is smaller than painting's. */
void vel_draw_selected_lines(vel_context *ctx, uint32_t win);

/** vel_draw_selected_box: draws the selection square of a window in
 * mark_colour: vel_draw_box(x - 10, y - 1, 10, 10), touching its left edge.
 * Parameters: win: the window.
 * Writes: first, whatever the object's type, x <= 10 becomes 11 and y <= 1
 *   becomes 2 (signed).
 * Result: none.
 * Oddities: the vertical limit differs from the outline's and painting's. */
void vel_draw_selected_box(vel_context *ctx, uint32_t win);

/** vel_undraw_selected_lines: erases the selection outline: the same
 * rectangle as vel_draw_selected_lines in background_colour.
 * Parameters: win: the window.
 * Writes: only a window without a master is clamped first, as painting
 *   does: x <= 10 becomes 11, y <= 24 becomes 25 (signed).
 * Result: none.
 * Oddities: the erased outline is drawn around the clamped position. */
void vel_undraw_selected_lines(vel_context *ctx, uint32_t win);

/** vel_undraw_selected_box: erases the selection square: the same box as
 * vel_draw_selected_box in background_colour.
 * Parameters: win: the window.
 * Writes: only a window without a master is clamped first, as painting
 *   does: x <= 10 becomes 11, y <= 24 becomes 25 (signed).
 * Result: none.
 * Oddities: none. */
void vel_undraw_selected_box(vel_context *ctx, uint32_t win);

/** vel_draw_cursor: draws the text cursor of obj: a vertical line one font
 * height tall at (cursor_x, cursor_y) in the text colour, clipped to the
 * text limits L, R, T, B of vel_get_borders_for_text.
 * Parameters: obj: the object.
 * Writes: nothing; no lock, no refresh.
 * Result: none.
 * Oddities: the height is the own font's for VEL_FONT_OWN, else the
 *   context font's.  Nothing is drawn unless L < cursor_x < R.  The top is
 *   compared with T and B unsigned and the bottom signed, so with T = -1
 *   every cursor counts as cut at the top and starts at row 0; a cursor cut
 *   on both sides always runs from T + 1 to B - 1, upward when the limits
 *   cross; a visible part of one pixel is not shown. */
void vel_draw_cursor(vel_context *ctx, uint32_t obj);

/* ========================================================================
 * Input: selection loops, hit testing, key translation, text editing
 * ======================================================================== */

/** vel_get_mouse_selection: runs the selection loop until a left-button
 * release lands on stop_a, stop_b or frame button 7 (VEL_BUTTON_CLOSE).
 * Parameters: stop_a, stop_b: the objects that end the loop.
 * Writes: ctx->event; what the key functions and the editor write.
 * Result: the object the release hit.
 * Oddities: a stop value of 0 returns 0 at once, without reading an event;
 *   a negative one never matches, so -1 waits for object 7 alone.  Each
 *   pass fetches the next event into ctx->event and dispatches on its type
 *   byte: key-down goes to vel_getfirstkeyinformation; key-up to
 *   vel_getfinalkeyinformation, then vel_get_text; a release of the left
 *   button is hit-tested (vel_test_all_objects, 0 over empty space) and
 *   consumed by writing 0 into its type byte; anything else (motion,
 *   presses, other buttons, SDL_QUIT) is ignored: the loop has no way out
 *   but a hit on a stop object or on object 7.  An unconsumed event is
 *   dispatched again on the next pass when no new one has arrived.  When no
 *   event is pending the loop sleeps about a millisecond (SDL_Delay) before
 *   that pass, so waiting costs next to no processor time; the order in
 *   which events are handled is the same. */
uint32_t vel_get_mouse_selection(vel_context *ctx, int32_t stop_a, int32_t stop_b);

/** vel_get_mono_mouse_selection: vel_get_mouse_selection with a single stop
 * object.
 * Parameters: stop: the object that ends the loop.
 * Writes: as vel_get_mouse_selection.
 * Result: stop or 7 (0 at once for a stop of 0).
 * Oddities: as vel_get_mouse_selection. */
uint32_t vel_get_mono_mouse_selection(vel_context *ctx, int32_t stop);

/** vel_test_all_objects: the object under a point, trying in this order:
 *   1. frame buttons 1..7 (only up to object_count) that are not hidden,
 *      upward; the first hit is returned without its dependents;
 *   2. active_window, whatever its hidden flag: its innermost dependent
 *      under the point (vel_test_dep_objs), else the window itself;
 *   3. other windows (type 1, not hidden) from object_count down to 8;
 *   4. free-standing objects (no master, not a window, not hidden) from 8
 *      up to object_count: the innermost dependent, else the object.
 * Parameters: x, y: the point.
 * Writes: nothing.
 * Result: the object, or 0.
 * Oddities: among other windows a higher number wins where windows overlap,
 *   the window stack is not consulted, and the window itself is returned,
 *   never a dependent. */
uint32_t vel_test_all_objects(vel_context *ctx, uint32_t x, uint32_t y);

/** vel_test_dep_objs: the innermost dependent of obj under a point.
 * Parameters: obj: the master; x, y: the point.
 * Writes: nothing.
 * Result: the dependent, or 0.
 * Oddities: the dep_objs entries are tried in list order up to the first
 *   0, and the first hit wins (earlier entries lie on top); its own
 *   dependents are tried next.  Hidden dependents, those of zero width or
 *   height and those of VEL_BORDER_FITTED or VEL_BORDER_FITTED_FRAME are
 *   never hit, and their dependents are not reached through them.  An entry
 *   naming an object whose dependents are being tested already (a cycle) is
 *   skipped, and the whole test tries at most as many entries as the table
 *   has records. */
uint32_t vel_test_dep_objs(vel_context *ctx, uint32_t obj, uint32_t x, uint32_t y);

/** vel_in_object: whether a point lies strictly inside an object:
 * obj.x < x < obj.x + width and obj.y < y < obj.y + height.
 * Parameters: obj: the object; x, y: the point.
 * Writes: nothing.
 * Result: 1 inside, else 0.
 * Oddities: the outermost pixel rows and columns belong to no object.  A
 *   dependent must also lie strictly inside the limits its masters leave it
 *   (vel_get_borders_for_dep_object).  All comparisons are signed. */
uint32_t vel_in_object(vel_context *ctx, uint32_t obj, int32_t x, int32_t y);

/** vel_getfirstkeyinformation: translates a key-down in ctx->event through
 * the built-in German keyboard table.
 * Parameters: none.
 * Writes: key_code and key_printable; a key with a code consumes the
 *   event: keysym.sym and the type byte become 0.
 * Result: none.
 * Oddities: it acts only when cursor_object is nonzero and the event is
 *   SDL_KEYDOWN.  Modifiers count only when the mask is exactly one Shift
 *   key (1 or 2) or exactly the left Alt key (256): with Caps Lock, Num Lock
 *   or both Shift keys a key counts as plain.  Symbols up to 255 type
 *   themselves (letters give their capitals under Shift; umlauts, the digit
 *   row and some punctuation follow the German layout; left Alt gives
 *   @ [ ] { } | ~ and the backslash); Return and keypad Enter give 271; the
 *   arrows, Insert, Backspace and Delete keep their symbols; other symbols
 *   from 256 on give no code.  Shift+3 gives 0xFFFFFFA7 and Alt+e gives 321,
 *   which the editor never types.  key_printable is 1 for characters and 0
 *   for control keys (a key without code leaves it), but in a numeric field
 *   (type 6) 1 exactly for the digit symbols 48..57, whatever the
 *   modifiers. */
void vel_getfirstkeyinformation(vel_context *ctx);

/** vel_getfinalkeyinformation: on an SDL_KEYUP of any key, moves a pending
 * key_code into final_key.
 * Parameters: none.
 * Writes: final_key; key_code = 0.
 * Result: none.
 * Oddities: each release delivers the last key pressed, once. */
void vel_getfinalkeyinformation(vel_context *ctx);

/** vel_get_text: applies final_key to cursor_object, then redraws the active
 * window with one screen update of its rectangle
 * (vel_draw_and_screenup_selected_window).
 * Parameters: none.
 * Writes: the text (the label of entry fields, types 5 and 6; the text
 *   record text_index of types 1 and 3, reformatted after each change),
 *   text_length, cursor_line, cursor_column, cursor_x, cursor_y, scroll_x,
 *   scroll_y, the record's cursor_index, insert_mode (Insert); final_key and
 *   key_printable become 0.
 * Result: none.
 * Oddities: it does nothing, final_key included, when final_key is 0, there
 *   is no cursor_object, its type is none of 1, 3, 5 and 6, or a type 1 or 3
 *   finds no text tables.  Entry fields take at most the smaller of 64 and
 *   max_chars characters, multi-line texts 999 characters in 40 formatted
 *   lines.  Keys: 271 Enter (new paragraph), 273/274 Up/Down, 275/276
 *   Right/Left, 277 Insert (toggles insert_mode: 0 insert, any other value
 *   overwrite), 8 Backspace, 127 Delete, and any code up to 255 with
 *   key_printable 1 is typed.  Overwriting the last character of a field
 *   appends it once more ("abc" becomes "abxx"); Up and Down place the
 *   cursor one character right of its column; Right never scrolls; Left
 *   never leaves its line; overwriting at the end of a multi-line text puts
 *   the terminator at the cursor's column.  Text memory never changes
 *   outside its field: the last byte of the label or text record is made a
 *   terminator on entry and kept one, and a multi-line text takes typed
 *   characters only while cursor_index is below 999. */
void vel_get_text(vel_context *ctx);

/** vel_get_position_in_stream: sets the text record's cursor_index of
 * cursor_object from its cursor_line and cursor_column, walking the
 * formatted lines.
 * Parameters: none.
 * Writes: the record's cursor_index.
 * Result: none.
 * Oddities: a paragraph break takes one text position, a wrap made by the
 *   formatter none.  A position beyond the last formatted line leaves
 *   cursor_index unchanged. */
void vel_get_position_in_stream(vel_context *ctx);

/** vel_get_column_row: sets cursor_line and cursor_column of cursor_object
 * from its record's cursor_index, by the same walk.
 * Parameters: none.
 * Writes: cursor_line, cursor_column.
 * Result: none.
 * Oddities: an index at the end of a wrapped line stays at that line's
 *   end; one just after a paragraph break goes to column 0 of the next
 *   line.  An index the walk never reaches leaves both unchanged. */
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

/** vel_activate_window: brings window_to_activate (W) to the front and
 * makes it active.
 * Parameters: none.
 * Writes: W's hidden (a closed W is opened), window_stack, window_count,
 *   the cursors of W and its dependents (vel_initiate_cursor_win),
 *   active_window = W, window_to_activate = 0, cursor_object = W when W's
 *   editable is 1, its first cursor-taking dependent (or 0) when editable is
 *   0, unchanged otherwise; then vel_set_operators.  The previous active
 *   window's marks and shown frame buttons are erased.
 * Result: none.
 * Oddities: ignored, window_to_activate kept, unless W is a window (type 1)
 *   without a master and not already active.  A closed W (hidden 1) becomes
 *   hidden 0 and, once stacked, counts in window_count; with 100 windows
 *   counted a closed W is only marked visible and the call ends there.  A
 *   window found anywhere among the 100 stack entries is taken out of its
 *   place; the counted entries move down one (an entry pushed past index 99
 *   is lost) and W goes into entry 0.  A window already visible but not
 *   stacked enters uncounted.  An open window is raised even with a full
 *   stack. */
void vel_activate_window(vel_context *ctx);

/** vel_close_win: closes a window.
 * Parameters: win: the window; 0 the active window (nothing when none is
 *   active).
 * Writes: window_stack (the entries below move up), window_count, hidden =
 *   1; closing the active window also hides its frame buttons, clears
 *   cursor_object when the window itself held it (not when a dependent
 *   did), clears active_window and activates the window that moved into its
 *   stack place, if any.
 * Result: none.
 * Oddities: a hidden or unstacked window, and a number outside the object
 *   table, are ignored.  The window's area is erased, and for the active
 *   window its marks and frame buttons; nothing is redrawn. */
void vel_close_win(vel_context *ctx, uint32_t win);

/** vel_set_operators: places the frame buttons on the active window.
 * Parameters: none.
 * Writes: x, y and hidden of buttons 1..7.
 * Result: none.
 * Oddities: with w the window's cut width (vel_p_cutted_w_independent), a
 *   VEL_WINDOW_FULL_FRAME window shows buttons 1..7 with button k at
 *   x + w - 112 + 16 (k - 1); a VEL_WINDOW_REDUCED_FRAME window shows button
 *   7 at x + w - 16 and button 1 next to it at x + w - 32 and hides 2..6;
 *   both at y - 24.  Other kinds change nothing.  Without an active window,
 *   or with a hidden one, all seven are hidden. */
void vel_set_operators(vel_context *ctx);

/** vel_select_window: acts on the object the user hit, stored in
 * window_to_activate.
 * Parameters: none.
 * Writes: a window without a master is activated (vel_activate_window) and
 *   everything is redrawn and shown; an editable (1) window, text object,
 *   entry field or chain member becomes cursor_object and the active window
 *   is redrawn and its rectangle shown.
 * Result: none.
 * Oddities: in the second case window_to_activate is kept; anything else
 *   does nothing. */
void vel_select_window(vel_context *ctx);

/** vel_decide_window: a modal question: activates win, redraws everything,
 * runs vel_get_mouse_selection and closes the active window again
 * (bringing back the one below).
 * Parameters: win: the dialog window; first, last: its two answer objects.
 * Writes: as activation, the selection loop and closing.
 * Result: the loop's result: first, last, or 7 for the close button.
 * Oddities: keys typed meanwhile reach the editor.  The caller redraws
 *   after it. */
uint32_t vel_decide_window(vel_context *ctx, uint32_t win, uint32_t first, uint32_t last);

/** vel_notice_window: a modal notice: as vel_decide_window with a single
 * stop object (vel_get_mono_mouse_selection).
 * Parameters: win: the dialog window; obj: the object that ends it.
 * Writes: as vel_decide_window.
 * Result: none.
 * Oddities: frame button 7 ends it too. */
void vel_notice_window(vel_context *ctx, uint32_t win, uint32_t obj);

/** vel_initiate_cursor_win: starts the text cursor of win and of its
 * dependents.
 * Parameters: win: the window.
 * Writes: of an editable (1) object whose cursor_x and cursor_y are both 0:
 *   cursor_x = x + margin_left, cursor_y = y + margin_top, cursor_line and
 *   cursor_column 0.
 * Result: none.
 * Oddities: a cursor placed once is never reset. */
void vel_initiate_cursor_win(vel_context *ctx, uint32_t win);

/** vel_initiate_cursor_dep_objs: the same for obj's dependents only,
 * recursively.
 * Parameters: obj: the master.
 * Writes: as vel_initiate_cursor_win.
 * Result: none.
 * Oddities: dependents of width or height 0 are skipped and not descended
 *   into, and only those of a nonzero type get a cursor. */
void vel_initiate_cursor_dep_objs(vel_context *ctx, uint32_t obj);

/** vel_check_cursor_dep_objs: the first dependent of obj, depth first in
 * list order, that can take the cursor: nonzero width and height and
 * editable 1.
 * Parameters: obj: the master.
 * Writes: nothing.
 * Result: the dependent, or 0.
 * Oddities: sized dependents with editable 0 are searched in turn; hidden is
 *   not looked at. */
uint32_t vel_check_cursor_dep_objs(vel_context *ctx, uint32_t obj);

/** vel_exa_left_pressed: the left button down on frame button
 * window_to_activate.
 * Parameters: none.
 * Writes: as the resize and scroll functions.
 * Result: none.
 * Oddities: only with an active VEL_WINDOW_FULL_FRAME window and frame_mode
 *   VEL_FRAME_MODE_RESIZE or VEL_FRAME_MODE_SCROLL: button 2 shrinks the
 *   height / scrolls down, 3 grows the height / scrolls up, 5 shrinks the
 *   width / scrolls right, 6 grows the width / scrolls left.  Other buttons
 *   do nothing. */
void vel_exa_left_pressed(vel_context *ctx);

/** vel_exa_left_released: the left button up on frame button
 * window_to_activate, whatever the window kind.
 * Parameters: none.
 * Writes: VEL_BUTTON_MOVE moves the active window (vel_move_window);
 *   VEL_BUTTON_MODE switches frame_mode from resize to scroll with
 *   mark_colour = mark_colour_b, or from scroll to resize with
 *   mark_colour_a, then redraws everything; VEL_BUTTON_CLOSE closes the
 *   active window and redraws everything.
 * Result: none.
 * Oddities: other frame modes leave the mode button without effect. */
void vel_exa_left_released(vel_context *ctx);

/** vel_move_window: moves the active window to the next left-button press,
 * which it waits for and consumes.
 * Parameters: none.
 * Writes: ctx->event (cleared first, so only a press fetched by this call
 *   counts); the window's x and y (the press, with x at least 11 and y at
 *   least 25), its own cursor when editable is 1, its dependents
 *   (vel_update_dep_objs_after_move) by the same difference; then
 *   vel_set_operators.
 * Result: none.
 * Oddities: every event before the press is dropped and later ones stay
 *   queued; while no event is pending the loop pauses about a millisecond
 *   between polls.  The window, its marks and its frame buttons are erased
 *   first (for a full frame the buttons from 1 up to the first hidden one),
 *   everything is redrawn after.  Without an active window it returns at
 *   once. */
void vel_move_window(vel_context *ctx);

/** vel_increase_win_w: widens the active window by 4 pixels while its width
 * is below screen_width - 50.
 * Parameters: none.
 * Writes: width.
 * Result: none.
 * Oddities: the marks and the window are erased first and everything is
 *   redrawn after, also when the limit refused the change.  Dependents keep
 *   their size and place.  Nothing without an active window. */
void vel_increase_win_w(vel_context *ctx);

/** vel_increase_win_h: as vel_increase_win_w for the height, below
 * screen_height - 50.
 * Parameters: none.
 * Writes: height.
 * Result: none.
 * Oddities: as vel_increase_win_w. */
void vel_increase_win_h(vel_context *ctx);

/** vel_decrease_win_w: narrows the active window by 4 pixels while its
 * width is above 20.
 * Parameters: none.
 * Writes: width.
 * Result: none.
 * Oddities: as vel_increase_win_w. */
void vel_decrease_win_w(vel_context *ctx);

/** vel_decrease_win_h: as vel_decrease_win_w for the height.
 * Parameters: none.
 * Writes: height.
 * Result: none.
 * Oddities: as vel_increase_win_w. */
void vel_decrease_win_h(vel_context *ctx);

/** vel_scroll_win_up: scrolls the active window's contents up by
 * scroll_step: scroll_y falls by the step, the dependents move towards
 * lower y (vel_update_y_dependent_obj), then the active window is redrawn
 * and its rectangle shown.
 * Parameters: none.
 * Writes: scroll_y, the window's cursor_y (editable 1), the dependents.
 * Result: none.
 * Oddities: the offset (signed) may run from -M to 2 M, M being
 *   scroll_max_y, or from -5 to 5 screen heights when M is 0; up scrolls
 *   while the offset is above the lower end, otherwise nothing at all
 *   happens.  Nothing without an active window. */
void vel_scroll_win_up(vel_context *ctx);

/** vel_scroll_win_down: as vel_scroll_win_up the other way: scroll_y grows
 * by the step, the dependents move towards higher y.
 * Parameters: none.
 * Writes: as vel_scroll_win_up.
 * Result: none.
 * Oddities: it scrolls while the offset is below the upper end. */
void vel_scroll_win_down(vel_context *ctx);

/** vel_scroll_win_left: as vel_scroll_win_up along x: scroll_x falls by the
 * step, the dependents move towards lower x (vel_update_x_dependent_obj).
 * Parameters: none.
 * Writes: scroll_x, the window's cursor_x (editable 1), the dependents.
 * Result: none.
 * Oddities: the window's own cursor moves right, not left.  The range uses
 *   scroll_max_x and screen widths. */
void vel_scroll_win_left(vel_context *ctx);

/** vel_scroll_win_right: as vel_scroll_win_left the other way: scroll_x
 * grows by the step, the dependents and the cursor move towards higher x.
 * Parameters: none.
 * Writes: as vel_scroll_win_left.
 * Result: none.
 * Oddities: it scrolls while the offset is below the upper end. */
void vel_scroll_win_right(vel_context *ctx);

/** vel_update_x_dependent_obj: moves obj's dependents along x, recursively.
 * Parameters: obj: the master; direction: 1 subtracts d, 2 adds it, other
 *   values move nothing; d: the distance.
 * Writes: x of the dependents that follow, and cursor_x when editable is 1.
 * Result: none.
 * Oddities: a dependent follows when its clip_mode is VEL_CLIP_MARGINS, or
 *   VEL_CLIP_FRAME with a master that has a master itself (VEL_CLIP_FRAME
 *   directly on a top-level window stays put); only followers are
 *   descended into. */
void vel_update_x_dependent_obj(vel_context *ctx, uint32_t obj, uint32_t direction, uint32_t d);

/** vel_update_y_dependent_obj: as vel_update_x_dependent_obj along y.
 * Parameters: as vel_update_x_dependent_obj.
 * Writes: y and cursor_y.
 * Result: none.
 * Oddities: as vel_update_x_dependent_obj. */
void vel_update_y_dependent_obj(vel_context *ctx, uint32_t obj, uint32_t direction, uint32_t d);

/** vel_update_dep_objs_after_move: moves all of obj's dependents,
 * recursively, whatever their size.
 * Parameters: obj: the master; dx, dy: the distance (negative moves wrap as
 *   unsigned numbers).
 * Writes: x and y; cursor_x and cursor_y of editable (1) windows, text
 *   objects, entry fields and chain members.
 * Result: none.
 * Oddities: none. */
void vel_update_dep_objs_after_move(vel_context *ctx, uint32_t obj, uint32_t dx, uint32_t dy);

/** vel_add_difference_toxy_dep_objs: as vel_update_dep_objs_after_move, but
 * dependents of width or height 0 are skipped and not descended into.
 * Parameters: as vel_update_dep_objs_after_move.
 * Writes: x and y; the cursor of every dependent whose editable is 1,
 *   whatever its type.
 * Result: none.
 * Oddities: none. */
void vel_add_difference_toxy_dep_objs(vel_context *ctx, uint32_t obj, uint32_t dx, uint32_t dy);

/* ========================================================================
 * Menus and file selector
 * ======================================================================== */

/** vel_move_out_menu: shows a pull-down menu and runs its own event loop
 * until the menu is left or a left button is released on it.
 * Parameters: menu: the menu, its entries being its dependents up to the
 *   first 0; mode: 1 = the menu hangs below a title the pointer is still
 *   on, any other value = none.
 * Writes: the menu's hidden (0 while shown, 1 after); the fill colour of
 *   the highlighted entry, given back exactly at the end; ctx->event.
 * Result: the entry released on, or 0; 0 at once for menu 0 or a number
 *   outside the object table.
 * Oddities: each pass fetches one event (pausing about a millisecond when
 *   none is pending) and reads the pointer.  The first shown, sized entry
 *   under the pointer is highlighted: each of its fill components above 20
 *   is lowered by 20 and raised again when the highlight moves on or the
 *   menu closes; the menu is repainted and its rectangle shown only when
 *   the highlight changes.  A left release is tested at the event's own
 *   position; off every entry it returns 0.  The menu is left, with 0, when
 *   the pointer is left or right of its visible columns or below it, or
 *   above its top: with mode 1 only after the pointer has been over an
 *   entry, with any other mode at once.  A menu without entries sees no
 *   releases.  Other events are dropped.  The menu is erased at the end but
 *   the erased area is not shown: the caller redraws.  The refreshed
 *   rectangle starts at the menu's corner, at 0 for a coordinate before the
 *   screen and 5 pixels short of the edge for one beyond it, and is cut to
 *   the screen. */
uint32_t vel_move_out_menu(vel_context *ctx, uint32_t menu, uint32_t mode);

/** vel_prepare_fileselector: makes up to n rows under list's first
 * dependent t, the template.
 * Parameters: list: the list object; n: the rows wanted.
 * Writes: row t + k becomes list's dependent entry k, with the template's
 *   type, x, width, height, fill and text colours, margin_top and
 *   margin_left, master = list, and y = template y + (template height + 3) k.
 * Result: none.
 * Oddities: it stops after the first row numbered above object_count and at
 *   dependent entry 99; the rows' records must exist (loaded or spare): it
 *   also stops before a row outside the object table.  Nothing when list
 *   has no dependent. */
void vel_prepare_fileselector(vel_context *ctx, uint32_t list, uint32_t n);

/** vel_read_app_dir: reads the current directory's entries, "." and ".."
 * included, in the order the system delivers them.
 * Parameters: none.
 * Writes: dir_names (at most 100, each cut to 64 characters); dir_last =
 *   their number - 1; dir_order in display order: by first byte only,
 *   ascending, by exchanges.
 * Result: none.
 * Oddities: names with the same first character keep no particular order.
 *   A directory that cannot be opened leaves the listing as it was; one
 *   that delivers nothing (removed while current) leaves a single empty
 *   name, which vel_load_dir_entries does not show. */
void vel_read_app_dir(vel_context *ctx);

/** vel_load_dir_entries: writes the listing into list's dependents in
 * display order, the template first.
 * Parameters: list: the list object.
 * Writes: of each row filled: label = the name, hidden 0, width 180, up to
 *   dir_last, entry 99 or the first 0 entry; the list's height = rows filled
 *   x (first row's height + 3) + 40; the rows left over get hidden 1 and
 *   width 0.
 * Result: none.
 * Oddities: nothing when dir_last is 0; a dir_last above 99 counts as 99.
 *   Order entries beyond the table show an empty name. */
void vel_load_dir_entries(vel_context *ctx, uint32_t list);

#ifdef __cplusplus
}
#endif

#endif /* VELUMO_H */
