#pragma once
#include "graph/simulation.h"

#include <QObject>
#include <QString>

#include <memory>

class QTimer;

namespace quorvex::gui {

class QtChart2D;

// Plays the family of curves drawn on a chart as a simulation: the curves in turn in the first
// one's place, one frame every delay, until stopped. Playing computes nothing: the frames are the
// drawn numbers, taken when it starts.
class SimulationPlayer : public QObject {
    Q_OBJECT

public:
    SimulationPlayer(QtChart2D& chart, QObject* parent);
    ~SimulationPlayer() override;

    // Starts on what the chart shows; false with `why` set when it shows no family of curves.
    bool start(QString* why = nullptr);
    // Stops; the owner draws the whole family again.
    void stop();
    bool running() const { return m_simulation != nullptr; }
    void slower();
    void faster();
    // The frames and pace while running; null otherwise.
    const graph::Simulation* simulation() const { return m_simulation.get(); }
    // Shows the next frame at once (the timer does this by itself).
    void step();

Q_SIGNALS:
    void runningChanged(bool running);
    void frameShown(const QString& label);

private:
    QtChart2D& m_chart;
    QTimer* m_timer;
    std::unique_ptr<graph::Simulation> m_simulation;
};

} // namespace quorvex::gui
