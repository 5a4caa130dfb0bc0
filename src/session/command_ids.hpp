// Every command of the main window by its name. The numbers stand here alone: scripts, recordings and menus know them.
#pragma once

namespace vntl::command {

// clang-format off
enum Id : int {
    // File
    open_pattern = 40014, open_prf = 40016, open_buffer = 40015, open_raw = 40157,
    open_numor = 40212, open_instrument = 40211, view_numor_header = 40210,
    save_free_format = 40208, save_xys = 40209, save_buffer = 40009, save_picture = 40044, print = 40122,
    reset = 40019, recent_1 = 40038, recent_2 = 40067, recent_3 = 40068, recent_4 = 40069, recent_5 = 40070, exit = 40005,

    // Edit
    copy_picture = 40501, copy_text = 40502, undo = 40506, redo = 40507,

    // Profiles
    show_profiles = 40023, sort_profiles = 40025, play_profiles = 40158, copy_profile = 40102, delete_profiles = 40037,
    pattern_list = 40547, rename_pattern = 40548, delete_chosen = 40560, show_chosen = 40561, hide_chosen = 40562, show_all = 40563,
    normalize_monitor = 40026, shift_profiles = 40141, offset_align = 40149, scale_y = 40115, scale_x = 40124,
    file_information = 40546, select_excluded = 40110, insert_excluded = 40151, admin_excluded = 40034,

    // X space
    xspace_menu = 40006, to_two_theta = 40042, to_tof = 40043, to_d = 40017, to_q = 40089, to_s = 40081,
    change_wavelength = 40087, change_dtt = 40088, constants_from_file = 40545,

    // Calculations
    subtract_background = 40559,
    sum = 40100, average = 40123, difference = 40101, multiply = 40162, efficiency = 40163,
    smoothing_menu = 40035, smooth_fourier = 40020, smooth_polynomial = 40090,
    peaks_menu = 40091, peaks_on = 40096, peaks_off = 40097, search_peaks = 40092, search_satellites = 40180,
    insert_peak = 40093, delete_peak = 40094, snap_to_maximum = 40558, clear_peaks = 40147,
    save_peaks_menu = 40008, save_peaks_free = 40010, save_peaks_dicvol = 40098, save_peaks_treor = 40191, save_peaks_ito = 40160,
    save_peaks_vecfind = 40177,
    background_menu = 40120, background_on = 40138, background_off = 40139, search_background = 40159,
    insert_background = 40144, delete_background = 40145, clear_background = 40148, save_background = 40002,
    fit_menu = 40024, fit_on = 40095, fit_off = 40099, fit_auto_peaks = 40194, run_fit = 40150, clear_fit = 40146,
    load_pik = 40224, edit_pik = 40225, fit_series = 40509,
    hkl_gen = 40154,
    lines_menu = 40215, lines_on = 40220, lines_off = 40221, line_1 = 40216, line_2 = 40217, line_3 = 40218, line_4 = 40219,
    lines_settings = 40222,

    // Plot
    graph_2d = 40027, graph_2d_log = 40226, contour = 40031, contour_log = 40227, graph_3d = 40028, surface_3d = 40125, model_3d = 40022,
    linear_intensities = 40549, logarithms = 40508, root_intensities = 40550, next_scale = 40551, waterfall = 40552,
    style_default = 40553, style_paper = 40554, style_screen = 40555, style_dark = 40556, series_by_temperature = 40557,
    focus = 40021, focus_profile = 40036, target = 40111,
    move_left = 40106, move_right = 40109, all_left = 40133, all_right = 40116, move_up = 40118, move_down = 40119,
    contract = 40136, expand = 40137, view_back = 40503, view_forward = 40504,
    drag = 40105, drag_end = 40113, quick_view = 40030, viewer_2d = 40169, generic_graphs = 40179, sequential_results = 40155,

    // Options
    preferences = 40033,

    // Ext. Applications
    run_quendrix = 40135, run_sequential = 40161, run_studio = 40108, run_tabedit = 40117, run_glinker = 40129, run_gmapper = 40134,
    run_repsolve = 40142, run_vecfind = 40178, run_dicvol = 40188, run_ito = 40192, run_treor = 40193, run_rawmerge = 40197,
    run_radiox = 40207, prepare_osl = 40213, edit_pcr = 40104, text_editor = 40107, console = 40128, explorer = 40132,

    // Help
    guide_ascii = 40082, guide_html = 40084, guide_pdf = 40085, studio_guide = 40086, news_text = 40121, news_html = 40156,
    program_news = 40076, download_suite = 40079, download_program = 40080, web_site = 40130, gestures = 40505, about = 40018,

    // Toolbar of the quick view's window
    quick_view_directory = 40127, quick_view_previous = 40103, quick_view_next = 40131, quick_view_to_main = 40126, quick_view_close = 40114,

    // The text editor's window
    editor_new = 40510, editor_open, editor_save, editor_save_as, editor_close, editor_undo, editor_redo, editor_cut, editor_copy,
    editor_paste, editor_select_all, editor_find, editor_find_next,

    // The window of generic graphics
    generic_open = 40200, generic_close = 40203, generic_print = 40201, generic_export_ps = 40195, generic_export_emf = 40196,
    generic_exit = 40205, generic_preferences = 40206, generic_reload = 40198,

    // The model's window
    model_save_as = 40032, model_save_w3d = 40223, model_print = 40039, model_exit = 40041, model_wireframe = 40050,
    model_hidden_lines = 40051, model_unlit = 40052, model_flat = 40053, model_gouraud = 40054, model_phong = 40055, model_light = 40046,
    model_view = 40047, model_scale = 40062, model_filter = 40061, model_colour = 40063, model_edge_colour = 40048,
    model_spin_high = 40040, model_spin_medium = 40060, model_spin_low = 40071, model_clockwise = 40073, model_anti_clockwise = 40074,
    model_spin_stop = 40059, model_web_site = 40065, model_info = 40078, model_about = 40066,

    // The window of area detectors
    viewer_open = 40166, viewer_instrument = 40530, viewer_reset, viewer_exit, viewer_bitmap, viewer_contour, viewer_surface,
    viewer_reload, viewer_linear, viewer_root_square, viewer_logarithm, viewer_rectangle, viewer_line, viewer_section, viewer_omega,
    viewer_zone,
};
// clang-format on

}  // namespace vntl::command
