#pragma once
// frmData17 "Airport weather": the latest METAR report or TAF forecast of an airport, fetched
// from the weather server while the window stays responsive, as received and decoded.

#include <string>

#include "app/CalculatorScreen.hpp"

class QPlainTextEdit;
class QTabWidget;

namespace norvane {

class UrlTransfer;

class WeatherScreen : public CalculatorScreen {
  Q_OBJECT
 public:
  explicit WeatherScreen(QWidget* parent = nullptr);

  bool busy() const;
  void prepareScreenshot() override;

 protected:
  void boxEdited(int index) override;

 private:
  QGroupBox* buildAirport();
  QGroupBox* buildKind();
  void addFetchButtons(QHBoxLayout* top);
  void buildReport();
  void setTabChain();
  void getWeather();
  void cancelFetch();
  void showResult(int code);
  void setWeatherText(const QString& text, const QColor& colour);
  // The decoded view of the report on screen, with the density altitude for a typed elevation.
  void showDecoded();

  InputBox* inboxICAO_;
  QRadioButton* optW_[2];
  QPushButton* cmdGetWeather_;
  QPushButton* cmdCancel_;
  QLabel* lblR_;
  QPlainTextEdit* textWeather_;
  InputBox* inboxElevation_;
  QTabWidget* tabWeather_;
  QPlainTextEdit* textDecoded_;
  std::string report_;  // the report on screen, empty when none
  UrlTransfer* transfer_ = nullptr;
  std::string reply_;
};

}  // namespace norvane
