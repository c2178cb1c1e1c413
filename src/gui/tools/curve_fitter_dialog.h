#pragma once
#include "desktop/curve_fitter.h"

#include "gui/tools/tool_dialog.h"

#include <functional>
#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QTableView;

namespace quorvex::gui {

class CurveFitModel;
class DataPointsDialog;
class DocumentWindow;

// The "Curve Fitting Utility": a least-squares polynomial through a data set typed, pasted or
// loaded from a file; the polynomial, its correlation and determination and the table of the
// data against the fit; outlier removal, the polynomial defined as a function of the document,
// a graph of data and fit, copy and CSV. Its inputs and data set are kept with the document.
class CurveFitterDialog : public ToolDialog {
    Q_OBJECT

public:
    explicit CurveFitterDialog(DocumentWindow& document, QWidget* parent = nullptr);
    ~CurveFitterDialog() override;

    bool busy() const override { return m_busy; }
    void take_function(const QString&) override {}

    QSpinBox* coefficients() const { return m_coefficients; }
    QCheckBox* linear() const { return m_linear; }
    QSpinBox* precision() const { return m_precision; }
    QCheckBox* smooth() const { return m_smooth; }
    QLineEdit* polynomial() const { return m_polynomial; }
    QLineEdit* correlation() const { return m_correlation; }
    QLineEdit* determination() const { return m_determination; }
    QLabel* solution() const { return m_solution; }
    QTableView* view() const { return m_view; }
    DataPointsDialog* data_dialog() const { return m_data_dialog; }
    const graph::StrDataPnts& data() const { return m_data; }
    const std::optional<desktop::CurveFit>& fit() const { return m_fit; }

    // How many standard deviations mark an outlier: 2 or 3, 0 to cancel. A dialog unless replaced.
    std::function<int()> choose_sigma;

    void set_data(const graph::StrDataPnts& data);
    // Edits the data set in the "Data Points" dialog.
    void edit_data();
    bool load_data_file(const QString& path);
    bool save_data_file(const QString& path);
    // Fits the polynomial; false (after the message) when the data can not be fitted.
    bool compute();
    bool remove_outliers();
    bool define_function();
    bool graph_answer();
    // The polynomial, with the table when asked, into the math editor and onto the clipboard.
    void copy_answer();
    void clear();
    QString table_text(QChar separator) const;
    bool export_csv(const QString& path, QString* error = nullptr);

private:
    void load_inputs();
    void store_inputs();
    void show_fit();
    void clear_results();
    QString number_text(long double value) const;

    DocumentWindow& m_document;
    QSpinBox* m_coefficients;
    QCheckBox* m_linear;
    QSpinBox* m_precision;
    QCheckBox* m_smooth;
    QLineEdit* m_polynomial;
    QLineEdit* m_correlation;
    QLineEdit* m_determination;
    QLabel* m_solution;
    QTableView* m_view;
    CurveFitModel* m_model;
    DataPointsDialog* m_data_dialog;
    graph::StrDataPnts m_data;
    std::optional<desktop::CurveFit> m_fit;
    QString m_source; // the file the data came from, for the solution's line
    bool m_busy = false;
    bool m_outliers_removed = false;
    bool m_coefficients_changed = false;
    bool m_loading = false; // the fields are being filled from the document
};

} // namespace quorvex::gui
