#pragma once
#include "desktop/stat_plot.h"

#include "gui/tools/tool_dialog.h"

#include <optional>
#include <vector>

class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QSpinBox;
class QTableView;

namespace quorvex::gui {

class DataPointsDialog;
class DocumentWindow;
class FrequencyModel;
class StatValuesModel;

// The stat plot ("Statistical Plotting"): a list of single values becomes a frequency
// distribution of equal-width or equally full intervals, shown as a table and graphed as a
// histogram or a Pareto chart. The values are the document's stat plot data set, typed in the
// data points dialog (X values only), pasted as a column or loaded from a data file, and shown in
// a table at the tool's precision; its inputs and data are kept with the document.
class StatPlotDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit StatPlotDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~StatPlotDialog() override;

    QTableView* values_view() const { return m_values_view; }
    QTableView* distribution_view() const { return m_distribution_view; }
    QLineEdit* data_name() const { return m_name; }
    DataPointsDialog* data_dialog() const { return m_data_dialog; }
    QRadioButton* hystogram() const { return m_hystogram; }
    QRadioButton* pareto() const { return m_pareto; }
    QRadioButton* equal_intervals() const { return m_equal_intervals; }
    QRadioButton* equal_probabilities() const { return m_equal_probabilities; }
    QRadioButton* set_intervals() const { return m_set_intervals; }
    QSpinBox* interval_count() const { return m_count; }
    QCheckBox* auto_compute() const { return m_auto_compute; }
    QCheckBox* auto_graph() const { return m_auto_graph; }
    QSpinBox* precision() const { return m_precision; }
    // "Solution - Based on ... points".
    QLabel* summary() const { return m_summary; }
    // The distribution computed last; none before the first run or after a refused one.
    const std::optional<std::vector<functions::Frequency>>& distribution() const { return m_distribution; }

    bool busy() const override { return m_busy; }
    // The stat plot takes values, not functions: the window only comes forward.
    void take_function(const QString&) override {}

    // Appends values (texts, each an expression) to the data set.
    void add_values(const std::vector<std::string>& texts);
    // The data points dialog on the values; OK keeps what it holds.
    void edit_data();
    // Appends the first column of the clipboard's text.
    void paste_column();
    // Adds a file's values to the data set, or replaces them (the data points dialog asks when
    // there are values); false (after the message) when it gives none.
    bool load_data(const QString& path);
    bool save_data(const QString& path);
    void clear_data();
    // Computes the distribution of the values as shown; false (after the message) when refused.
    bool compute();
    // Graphs the distribution computed last.
    bool graph_answer();
    // The distribution as lines "interval<separator>count", with the headings.
    QString table_text(QChar separator) const;
    bool export_csv(const QString& path, QString* error = nullptr);
    // The text Copy puts on the clipboard and into the math editor; the raw values first on request.
    QString copy_text(bool with_values) const;

private:
    void load_inputs();
    void store_inputs();
    desktop::StatPlotChoice choice() const;
    // A choice changed: kept with the document, and computed again when asked to.
    void choice_changed(bool recompute_always);
    void values_changed();
    // The data set becomes `values`, keeping the name typed in this window.
    void set_values(const graph::StrDataPnts& values);
    void show_summary();

    DocumentWindow& m_document;
    QLineEdit* m_name;
    QTableView* m_values_view;
    StatValuesModel* m_values;
    DataPointsDialog* m_data_dialog;
    QTableView* m_distribution_view;
    FrequencyModel* m_frequencies;
    QRadioButton* m_hystogram;
    QRadioButton* m_pareto;
    QRadioButton* m_equal_intervals;
    QRadioButton* m_equal_probabilities;
    QRadioButton* m_set_intervals;
    QSpinBox* m_count;
    QCheckBox* m_auto_compute;
    QCheckBox* m_auto_graph;
    QSpinBox* m_precision;
    QLabel* m_summary;
    std::optional<std::vector<functions::Frequency>> m_distribution;
    QString m_source; // the file the values came from, for the summary
    bool m_busy = false;
    bool m_loading = false;
};

} // namespace quorvex::gui
