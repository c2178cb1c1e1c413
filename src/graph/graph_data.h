#pragma once
#include "data_points.h"
#include "graph_note.h"
#include "graph_types.h"
#include "variable_copy.h"

#include "engine/function.h"
#include "engine/point.h"
#include "engine/variable.h"
#include "store/ini_file.h"

#include <array>
#include <list>
#include <string>
#include <vector>

namespace quorvex::graph {

using engine::Function;
using engine::Point;
using engine::StrPoint;
using engine::Variable;

// What a graph shows, independent of any window: functions and data sets, the swept variables,
// titles, colours, orientation, notes and labels. A document owns a list of these and hands one to
// its graph window to draw. Everything a saved document holds is a public member.
class GraphData {
public:
    // Orientation and margins are kept twice: the current value and the default the user can
    // return to.
    int Depth = 20, Inclination = 15, Rotation = 10; // 2-D depth effect
    int DefaultDepth = 20, DefaultInclination = 15, DefaultRotation = 10;
    // Pixels; 0 means the default margin.
    int MarginBottom2D = 0, MarginTop2D = 0, MarginLeft2D = 0, MarginRight2D = 0;
    // Pixels; 0 means the chart lays that side out by itself.
    int DefaultMarginBottom2D = 75, DefaultMarginTop2D = 16, DefaultMarginLeft2D = 67,
        DefaultMarginRight2D = 9;
    int XAxisLogarithmic = 0, YAxisLogarithmic = 0; // 2-D only
    int ShowGridLines = 1;
    float PerspectiveDepth = 20, XRotation = 25, YRotation = 0.34f, ZRotation = 310, XTranslate = 0,
          YTranslate = 0, Scale = 1; // 3-D view
    float DefaultPerspectiveDepth = 20, DefaultXRotation = 25, DefaultYRotation = 0.34f,
          DefaultZRotation = 310, DefaultXTranslate = 0, DefaultYTranslate = 0, DefaultScale = 1;

    // Chart colours as 0x00BBGGRR; graph_colors.h lists them with their keys.
    TColor BackgroundColor = 0x808040;
    TColor ForegroundColor = 0;
    TColor DataAreaBackgroundColor = 0xFFFFFF;
    TColor DataAreaForegroundColor = 0;
    TColor FooterBackgroundColor = 0;
    TColor FooterForegroundColor = 0xFFFFFF;
    TColor GraphBackgroundColor = 0;
    TColor GraphForegrondColor = 0xFF;
    TColor HeaderBackgroundColor = 0;
    TColor HeaderForegroundColor = 0xFFFFFF;
    TColor LegendBackgroundColor = 0xFFFFFF;
    TColor LegendForegroundColor = 0;
    TColor MeshBottomColor = 0;
    TColor MeshTopColor = 0;
    TColor SurfaceBottomColor = 0;
    TColor SurfaceTopColor = 0xFFFFFF;

    std::string Name;      // unique within the document
    std::string Directory; // last folder used for the graph's files
    std::string Header = "Header", Footer = "Footer";
    std::string XAxisTitle, YAxisTitle, ZAxisTitle;
    // 1: all data sets have equal point counts and share one X array; 2: each set has its own X.
    int DataLayout = 1;
    int Type = graph_type::Plot;
    unsigned long Type3D = k_default_type3d; // decimal digits, see graph_types.h
    VariableCopy XAxisVar, ZAxisVar;         // the swept variables the user asked for
    // The engine's variables of the same names as they stood before graphing, to restore them.
    VariableCopy CLXAxisVar, CLZAxisVar;
    bool GraphTwoSolutions = true;    // plot both branches of a two-valued expression
    bool AskGraphTwoSolutions = true; // ask once before doing so
    bool ShowPointLabels = false;     // label every point while it is computed
    bool StoreSimulation = false;     // keep the family of curves of a simulation
    bool XTitleSet = false, YTitleSet = false, ZTitleSet = false, FooterSet = false, HeaderSet = false;
    // The graph differs from what its window shows. Showing a graph sets the first three; a
    // successful build clears the last three here and sets them on every other graph.
    std::array<bool, 4> NeedsUpdate{false, true, true, true};
    std::array<bool, 7> SetupFlags{}; // scratch state of the setup pages, never saved
    int SetupState = 0;
    int CurDataSet = -1;             // index into DataSets of the set on the data page; -1 none
    std::vector<Function> Functions; // count and order are the series order
    std::list<Variable> ComVars;     // the variables common to all functions
    std::list<StrDataPnts> DataSets;
    std::list<GraphNote> Notes;
    double PieThresholdValue = 0; // slices below it are pooled
    int PieThresholdMethod = 1;
    int PieMinSlices = 5;
    std::array<bool, 3> PieOptions{true, true, true};
    bool IsTempCopy = false; // the owner's working copy while the setup pages are open
    bool ApplyAllLineWidths = false;

    explicit GraphData(std::string name = {});
    GraphData(const GraphData&) = default;
    // Through a fresh copy: assigning Variable elements in place would keep their point counts.
    GraphData& operator=(const GraphData& other);
    GraphData(GraphData&&) noexcept = default;
    GraphData& operator=(GraphData&&) noexcept = default;

    // A null text changes nothing.
    void SetName(const char* name);
    void SetDirectory(const char* directory);

    // 0 nothing to draw, 1 two-dimensional, 2 three-dimensional.
    int GetGraphType() const;
    // At least one function or one data set.
    bool IsGraphData() const;
    // An X or a Z variable is present.
    bool DataCheck() const;
    int GetNumXAxisPoints() const;
    int GetNumZAxisPoints() const;
    StrDataPnts* GetCurDataSet() { return GetDataSet(CurDataSet); }
    const StrDataPnts* GetCurDataSet() const { return GetDataSet(CurDataSet); }
    StrDataPnts* GetDataSet(int index);
    const StrDataPnts* GetDataSet(int index) const;

    // --- titles (graph_titles.cpp) ------------------------------------------------------------
    // A null text changes nothing; otherwise the text replaces the title and `user_set` says
    // whether the user chose it.
    void SetHeader(const char* text, bool user_set);
    void SetFooter(const char* text, bool user_set);
    void SetXAxisTitle(const char* text, bool user_set);
    void SetYAxisTitle(const char* text, bool user_set);
    void SetZAxisTitle(const char* text, bool user_set);
    // A title the user set and that is not empty survives unless `force`. Header and footer both
    // go by the footer's flag, so setting the footer by hand protects both titles and setting
    // only the header protects neither.
    void SetDefaultHeader(bool force);
    void SetDefaultFooter(bool force);
    void SetDefaultXAxisTitle(bool force);
    void SetDefaultYAxisTitle(bool force);
    void SetDefaultZAxisTitle(bool force);
    // Appends the functions' full names and then the data sets' names, separated by " , ", to
    // `buffer`, which holds at most k_title_buffer_size - 1 characters.
    void AddDefaultTitleString(std::string& buffer) const;
    void ClearTitles();
    static constexpr size_t k_title_buffer_size = 1024;

    // --- variables (graph_variables.cpp) ----------------------------------------------------
    // Stores a copy, or none for null. A copy without points takes the first data set's X count
    // when that is at least 2, otherwise 25; an X title the user did not set becomes the default.
    void SetXAxisVar(const Variable* variable);
    // As SetXAxisVar, with 25 points as the only fallback.
    void SetZAxisVar(const Variable* variable);
    // Copies kept to restore the engine's variables; 25 points as the fallback, no titles.
    void SetCLXAxisVar(const Variable* variable);
    void SetCLZAxisVar(const Variable* variable);
    // Rebuilds ComVars from the variables that every function has, in the order they first
    // appear; each takes its range from the first data set's X values when it has at least two.
    void SetComVarList();
    // Drops an axis variable whose name is not among ComVars.
    void DelUncommonVars();
    const Variable* FindComVar(const std::string& name) const;
    // Every data set has as many X values as the X variable has points, or, without one, as the
    // first set has.
    bool DataPointsEqual() const;

    // --- defaults from the ini store (graph_defaults.cpp) -------------------------------------
    // The user's default orientation from "Graph Default Orientation", into both the current and
    // the default values.
    void SetDefaultOrientation(const store::IniFile& ini);
    // The user's default colours from "Graph Default Colors"; a colour without one takes its
    // built-in value.
    void SetDefaultColors(const store::IniFile& ini);
    // What a new graph takes from the user's settings: the default orientation and the default
    // colours. Without settings (null) the built-in values stay.
    void SetUserDefaults(const store::IniFile* ini);
    // Writes the colours as the user's defaults ("r,g,b"); false when a write fails.
    bool SaveDefaultColors(store::IniFile& ini) const;
    // Mesh, shade, contour and zone on; hidden lines, projection off; the surface form.
    void SetDefault3DAttributes();
    int Get3DTypeBit(int position) const { return graph::Get3DTypeBit(Type3D, position); }
    bool Set3DTypeBit(int position, int digit) { return graph::Set3DTypeBit(Type3D, position, digit); }

    // --- notes and labels (graph_notes.cpp) ---------------------------------------------------
    GraphNote& SetNote(const char* text, int x, int y, int index, bool is_note);
    GraphNote& SetNote(const GraphNote& note);
    // Sets the text-object index of every item of that kind at that position.
    void SetNoteIndex(int x, int y, bool is_note, int index);
    bool IsNoteIndex(int index) const;
    bool IsLabelIndex(int index) const;
    // Removes the first item with that index, then moves every higher index down by one, as the
    // window's list of text objects closes the gap. True when an item was removed.
    bool DeleteNote(int index);
    // Numbers all items 0, 1, 2... in list order.
    void ResetNoteIndexes();
    void DecrementNoteIndexes(int index);
    int GetNumNotes() const;
    // Labels on one series; -1 counts all labels.
    int GetNumLabels(int set) const;
    // Labels on the series first..last, both included.
    int GetNumLabels(int first_set, int last_set) const;
    GraphNote* GetLabel(int set, int point);
    // A new function takes the lowest series number, so labels on series below `limit` move up.
    void IncrementLabelSets(int limit);
    // Gives the graph `functions` (full names unique), keeping every point label on the series of
    // its own function or data set. The last function is series 0 and the data sets follow the
    // functions, so a function added at the end takes the lowest series and the other labels move
    // up by one; the labels of a function no longer graphed are deleted.
    void ReplaceFunctions(std::vector<Function> functions);
    // Gives the graph `sets` (names unique) in the same way: labels of a set no longer there are
    // deleted, the others follow their set to its new series.
    void ReplaceDataSets(std::list<StrDataPnts> sets);
    // Deletes the labels of a removed function or data set (data sets are numbered after the
    // functions) and moves the labels of later series down by one.
    void RemoveLabelSet(int index, bool is_function);
    void FlushNotes();
    void FlushLabels();

    // Clears the titles, the four variable copies and the lists of functions, common variables,
    // data sets and notes.
    void Clear();
};

} // namespace quorvex::graph
