#include "views/theme/SymbolTable.h"

#include <array>
#include <charconv>

namespace tarnwick {

namespace {

// clang-format off
struct Drawing { const char* name; const char* path; };

constexpr Drawing kDrawings[] = {
  {"app", "R3 3 14 14 4"},
  {"airplayaudio", "A10 9.6 7-140 280A10 9.6 3.8-140 280O10 9.6 0.9"},
  {"arrow.down", "M10 3.5V16.2M5 11.2L10 16.2L15 11.2"},
  {"arrow.left.arrow.right", "M4 6.4H16.4M13.4 3.4L16.4 6.4L13.4 9.4M16 13.6H3.6M6.6 10.6L3.6 13.6L6.6 16.6"},
  {"arrow.up", "M10 16.5V3.8M5 8.8L10 3.8L15 8.8"},
  {"arrow.uturn.backward", "M4.2 7.4H12.2C14.9 7.4 16.6 9.2 16.6 11.6C16.6 14 14.9 15.8 12.2 15.8H8M7.6 3.8L4 7.4L7.6 11"},
  {"bag", "M4.4 6.6H15.6L16.4 14.6C16.5 16 15.5 17.2 14 17.2H6C4.5 17.2 3.5 16 3.6 14.6ZM7 8.8V6C7 4.2 8.2 2.8 10 2.8C11.8 2.8 13 4.2 13 6V8.8"},
  {"battery.100", "R2.2 6 13.6 8 2.4M17.9 8.9V11.1R4.9 8.6 8.2 2.8 0.5"},
  {"bell", "M10 3C7.2 3 5.4 5 5.4 7.8C5.4 11.6 3.8 12.4 3.8 13.6H16.2C16.2 12.4 14.6 11.6 14.6 7.8C14.6 5 12.8 3 10 3ZM8.4 16.5C9.2 17.2 10.8 17.2 11.6 16.5"},
  {"bell.slash", "M7.4 3.7C8.2 3.2 9 3 10 3C12.8 3 14.6 5 14.6 7.8C14.6 9.4 14.9 10.5 15.2 11.3M5.6 6.4C5.4 6.9 5.4 7.3 5.4 7.8C5.4 11.6 3.8 12.4 3.8 13.6H13.4M8.4 16.5C9.2 17.2 10.8 17.2 11.6 16.5M3.2 3L17 16.8"},
  {"bitcoinsign.circle", "O10 10 7.2M8 6.6V13.4M8 6.6H10.8C11.9 6.6 12.6 7.3 12.6 8.2C12.6 9.2 11.9 9.9 10.8 9.9H8M10.8 9.9C12.2 9.9 13 10.6 13 11.6C13 12.7 12.2 13.4 11 13.4H8"},
  {"bluetooth", "M5.4 6L14.2 13.6L10 17.2V2.8L14.2 6.4L5.4 14"},
  {"bookmark", "M5.2 4.9C5.2 3.6 6 2.8 7.3 2.8H12.7C14 2.8 14.8 3.6 14.8 4.9V17L10 13.4L5.2 17Z"},
  {"calendar", "R3 4 14 13 3M3 8.2H17M7 2.5V5.2M13 2.5V5.2"},
  {"camera.viewfinder", "M3 7V5.4C3 4 4 3 5.4 3H7M13 3H14.6C16 3 17 4 17 5.4V7M17 13V14.6C17 16 16 17 14.6 17H13M7 17H5.4C4 17 3 16 3 14.6V13O10 10 2.6"},
  {"chart.bar", "R3 10 3.4 7 1R8.3 3 3.4 14 1R13.6 7 3.4 10 1"},
  {"chart.line.uptrend.xyaxis", "M3.2 3V14.6C3.2 15.9 4 16.8 5.4 16.8H17M6.4 12.6L9.4 9.4L11.6 11.2L16 6M12.8 5.8H16.2V9.2"},
  {"chart.pie", "O10 10 7.2M10 2.8V10L15.1 15.1"},
  {"chart.xyaxis.line", "M3.2 3V14.6C3.2 15.9 4 16.8 5.4 16.8H17M6.5 12.5L9.5 8.5L12 10.8L16.2 5"},
  {"checklist", "M3 5.5L4.6 7.1L7.4 3.9M10.5 5.5H17M3 13.5L4.6 15.1L7.4 11.9M10.5 13.5H17"},
  {"checkmark", "M4.4 10.6L8.2 14.4L15.6 6"},
  {"checkmark.circle", "O10 10 7.2M6.8 10.2L9.1 12.5L13.3 7.6"},
  {"checkmark.square", "R3 3 14 14 3.6M6.8 10.2L9.1 12.5L13.3 7.6"},
  {"cloud.rain", "M6 12.4C4.3 12.4 3 11.2 3 9.6C3 8.1 4.1 7 5.6 6.8C6.1 4.8 7.8 3.4 9.9 3.4C12.4 3.4 14.4 5.3 14.6 7.6C16.1 7.7 17.2 8.7 17.2 10.1C17.2 11.4 16.2 12.4 15 12.4ZM7.2 15L6.4 17M10.8 15L10 17M14.4 15L13.6 17"},
  {"clock", "O10 10 7.2M10 5.8V10L13 11.8"},
  {"cloud.sun", "M6.2 16.8H13.2C15 16.8 16.4 15.5 16.4 13.8C16.4 12.1 15.1 10.9 13.5 10.8C13 8.8 11.4 7.6 9.5 7.6C7.4 7.6 5.8 9 5.5 10.9C3.9 11.1 2.8 12.3 2.8 13.8C2.8 15.5 4.3 16.8 6.2 16.8ZM10.9 5.2C11.5 4.6 12.2 4.3 13 4.3C14.9 4.3 16.4 5.8 16.4 7.7C16.4 8.4 16.2 9 15.9 9.5M13 1.4V1.6M17.4 3.3L17.3 3.4M18.8 7.7H19"},
  {"cpu", "R5 5 10 10 2.4R8.2 8.2 3.6 3.6 0.8M8 2.5V5M12 2.5V5M8 15V17.5M12 15V17.5M2.5 8H5M2.5 12H5M15 8H17.5M15 12H17.5"},
  {"creditcard", "R2.4 4.2 15.2 11.6 2.6M2.4 8.2H17.6M5.6 12.4H8.6"},
  {"cup.and.saucer", "M3.8 8H13.6V13C13.6 15.2 12.2 16.8 10 16.8H7.4C5.2 16.8 3.8 15.2 3.8 13ZM13.6 9.4H14.8C16.2 9.4 17 10.2 17 11.4C17 12.6 16.2 13.4 14.8 13.4H13.6M7.2 2.8V5.2M10.2 2.8V5.2"},
  {"doc", "M5.2 4.9C5.2 3.6 6 2.8 7.3 2.8H11.4L14.8 6.2V15.1C14.8 16.4 14 17.2 12.7 17.2H7.3C6 17.2 5.2 16.4 5.2 15.1ZM11.2 3V6.4H14.6"},
  {"doc.on.clipboard", "M7 4.4H6C4.7 4.4 3.9 5.2 3.9 6.5V15.1C3.9 16.4 4.7 17.2 6 17.2H14C15.3 17.2 16.1 16.4 16.1 15.1V6.5C16.1 5.2 15.3 4.4 14 4.4H13R7 2.8 6 3.4 1.4"},
  {"drop", "M10 2.6C12.6 5.8 15 8.6 15 11.7C15 14.7 12.8 16.9 10 16.9C7.2 16.9 5 14.7 5 11.7C5 8.6 7.4 5.8 10 2.6Z"},
  {"envelope", "R2.6 4.4 14.8 11.2 2.6M3.4 6L9 10.6C9.6 11.1 10.4 11.1 11 10.6L16.6 6"},
  {"equal.square", "R3 3 14 14 3.6M6.8 8.2H13.2M6.8 11.8H13.2"},
  {"exclamationmark.circle", "O10 10 7.2M10 6.2V10.6P10 13.7"},
  {"eyedropper.halffull", "M10.2 5.4L14.6 9.8M11.4 6.6L4.4 13.6L3.2 16.8L6.4 15.6L13.4 8.6M12.2 6.2L14.4 4C15 3.3 15.9 3.2 16.5 3.8C17 4.3 16.8 5.1 16.2 5.8L13.9 8M6.4 11.8H9.8"},
  {"face.smiling", "O10 10 7.2M6.9 11.8C7.6 13.2 8.7 13.9 10 13.9C11.3 13.9 12.4 13.2 13.1 11.8P7.6 8P12.4 8"},
  {"figure.seated.side", "O8.2 3.8 1.5M7.6 7.4V11.8H12L13.2 16.6M7.8 9.2H11.4M4.4 8.6V13.8C4.4 15.5 5.3 16.4 7 16.4H9.6"},
  {"figure.walk", "O10.6 3.6 1.5M10.4 7.2L9.4 11.4L11.8 13.4L12.4 17.2M9.4 11.4L8.4 14.2L6.4 17M10.4 7.2L7.4 8.6L6.8 11.2M10.4 7.2L12.4 9.6L14.6 10.2"},
  {"folder", "M2.8 6C2.8 4.6 3.7 3.7 5.1 3.7H7.4C8 3.7 8.5 3.9 8.9 4.4L10 5.7H14.9C16.3 5.7 17.2 6.6 17.2 8V13.9C17.2 15.3 16.3 16.2 14.9 16.2H5.1C3.7 16.2 2.8 15.3 2.8 13.9Z"},
  {"folder.badge.questionmark", "M17.2 8.2V8C17.2 6.6 16.3 5.7 14.9 5.7H10L8.9 4.4C8.5 3.9 8 3.7 7.4 3.7H5.1C3.7 3.7 2.8 4.6 2.8 6V13.9C2.8 15.3 3.7 16.2 5.1 16.2H10.6M12.9 12.2C13 11 13.8 10.4 14.8 10.4C15.9 10.4 16.7 11.1 16.7 12.1C16.7 13.4 14.8 13.3 14.8 14.7P14.8 17.1"},
  {"globe", "O10 10 7.2M2.8 10H17.2M10 2.8C7.6 5 6.6 7.4 6.6 10C6.6 12.6 7.6 15 10 17.2C12.4 15 13.4 12.6 13.4 10C13.4 7.4 12.4 5 10 2.8"},
  {"hourglass", "M5 2.8H15M5 17.2H15M6.2 2.8V5.5C6.2 8 10 8.8 10 10C10 11.2 6.2 12 6.2 14.5V17.2M13.8 2.8V5.5C13.8 8 10 8.8 10 10C10 11.2 13.8 12 13.8 14.5V17.2"},
  {"internaldrive", "M6 4.2H14C14.9 4.2 15.5 4.6 15.8 5.4L17.2 10.6V13.6C17.2 14.9 16.4 15.8 15 15.8H5C3.6 15.8 2.8 14.9 2.8 13.6V10.6L4.2 5.4C4.5 4.6 5.1 4.2 6 4.2ZM2.9 10.8H17.1P14 13.3"},
  {"keyboard", "R2.4 5 15.2 10 2.4P5.6 8.2P8.5 8.2P11.4 8.2P14.4 8.2M7 11.9H13"},
  {"line.3.horizontal", "M3.4 5.6H16.6M3.4 10H16.6M3.4 14.4H16.6"},
  {"list.number", "M8.6 5.4H17M8.6 14.6H17M8.6 10H17M3.2 4.3L4.5 3.4V7.2M3 13C3.4 12.2 5.2 12.2 5.2 13.4C5.2 14.4 3 15.4 3 16.6H5.2"},
  {"macwindow.on.rectangle", "R6.2 3.2 11.2 9 2.2M6.2 6.4H17.4M14 15.2C13.6 16.2 12.8 16.8 11.6 16.8H5.2C3.7 16.8 2.6 15.7 2.6 14.2V9.6C2.6 8.7 3 8 3.6 7.5"},
  {"magnifyingglass", "O8.8 8.8 5.6M13 13L17 17"},
  {"memorychip", "R2.8 5.2 14.4 8.2 2M6.6 8.2V10.4M10 8.2V10.4M13.4 8.2V10.4M5.5 13.6V16M8.5 13.6V16M11.5 13.6V16M14.5 13.6V16"},
  {"mic", "R7.4 2.6 5.2 9 2.6M4.6 9.6C4.6 12.6 6.9 14.6 10 14.6C13.1 14.6 15.4 12.6 15.4 9.6M10 14.6V17.4"},
  {"mic.slash", "M7.4 7V9C7.4 10.5 8.5 11.6 10 11.6M12.6 8.4V5.2C12.6 3.7 11.5 2.6 10 2.6C8.9 2.6 8 3.2 7.6 4.1M4.6 9.6C4.6 12.6 6.9 14.6 10 14.6C11.4 14.6 12.6 14.2 13.5 13.5M15.4 9.6C15.4 10.3 15.3 10.9 15 11.5M10 14.6V17.4M3.4 3L16.6 17"},
  {"moon", "M16.6 11.9C15.8 12.3 14.9 12.5 14 12.5C10.4 12.5 7.5 9.6 7.5 6C7.5 5.1 7.7 4.2 8.1 3.4C5 4.2 2.8 7 2.8 10.3C2.8 14.2 5.9 17.2 9.7 17.2C13 17.2 15.8 15 16.6 11.9Z"},
  {"music.note", "O5.8 14.8 2.2O14 13 2.2M8 14.8V5.2L16.2 3.2V13"},
  {"network", "O10 10 7.2M2.8 10H17.2M10 2.8C7.8 4.8 6.8 7.2 6.8 10C6.8 12.8 7.8 15.2 10 17.2C12.2 15.2 13.2 12.8 13.2 10C13.2 7.2 12.2 4.8 10 2.8"},
  {"note.text", "R3.5 3 13 14 3M7 7.2H13M7 10.2H13M7 13.2H10.5"},
  {"person.2", "O7.6 7 2.7M2.8 16C3 13.3 5 11.9 7.6 11.9C10.2 11.9 12.2 13.3 12.4 16M12.4 4.4C13.8 4.5 14.9 5.6 14.9 7C14.9 8.4 13.8 9.5 12.4 9.6M14.4 12.2C16 12.7 17 14 17.2 16"},
  {"person.crop.circle", "O10 10 7.2O10 8.2 2.5M5.4 15.4C6.2 13.5 7.8 12.7 10 12.7C12.2 12.7 13.8 13.5 14.6 15.4"},
  {"phone", "M6.8 3.2L4.7 3.8C3.5 4.2 2.9 5.2 3.1 6.4C3.9 11.8 8.2 16.1 13.6 16.9C14.8 17.1 15.8 16.5 16.2 15.3L16.8 13.2L13 11.2L11.4 12.8C9.6 12 8 10.4 7.2 8.6L8.8 7Z"},
  {"photo", "R2.6 3.8 14.8 12.4 2.8O7 7.8 1.2M2.8 14L6.6 10.8L9.4 13.2L13 9L17.2 13"},
  {"photo.on.rectangle", "R5.8 3 11.6 9.6 2.2O9.2 6.4 0.8M6 11.2L8.8 8.8L10.8 10.6L13.6 7.6L17.2 10.8M14 15.4C13.6 16.4 12.8 17 11.6 17H5.2C3.7 17 2.6 15.9 2.6 14.4V9.4C2.6 8.5 3 7.8 3.4 7.4"},
  {"pin", "M7 2.8H13M7.8 2.8V7.6L5.4 10.4V11.6H14.6V10.4L12.2 7.6V2.8M10 11.6V17.2"},
  {"play.rectangle", "R2.4 4 15.2 12 2.8M8.4 7.4V12.6L12.8 10Z"},
  {"plus", "M10 4V16M4 10H16"},
  {"plus.forwardslash.minus", "R4.2 2.6 11.6 14.8 2.6R7.2 5.4 5.6 2.4 0.5P7.4 11P10 11P12.6 11P7.4 14.2P10 14.2P12.6 14.2"},
  {"rectangle.dashed", "M3 6.4C3 5 4 4 5.4 4M8.4 4H11.6M14.6 4C16 4 17 5 17 6.4M17 9V11M17 13.6C17 15 16 16 14.6 16M11.6 16H8.4M5.4 16C4 16 3 15 3 13.6M3 11V9"},
  {"slider.horizontal.3", "M3 5.2H10.4O12.2 5.2 1.8M14 5.2H17M3 10H5.2O7 10 1.8M8.8 10H17M3 14.8H10.4O12.2 14.8 1.8M14 14.8H17"},
  {"sparkles", "M8.4 3.8L9.7 7.7C9.9 8.3 10.3 8.7 10.9 8.9L14.6 10.2L10.9 11.5C10.3 11.7 9.9 12.1 9.7 12.7L8.4 16.6L7.1 12.7C6.9 12.1 6.5 11.7 5.9 11.5L2.2 10.2L5.9 8.9C6.5 8.7 6.9 8.3 7.1 7.7ZM15 2.6V6M13.3 4.3H16.7M15.6 14.2V17M14.2 15.6H17"},
  {"speaker.slash", "M3 8.2H5.4L6.4 7.4M8 6L9.4 4.8V7.4M9.4 11V15.2L5.4 11.8H3V8.2M3.4 3L16.6 17"},
  {"speaker.wave.2", "M3 8.2H5.4L9.4 4.8V15.2L5.4 11.8H3ZM12.4 7.4C13.7 8.9 13.7 11.1 12.4 12.6M14.8 5C17.4 7.8 17.4 12.2 14.8 15"},
  {"square", "R3.4 3.4 13.2 13.2 3"},
  {"square.and.pencil", "M10.5 3.5H5.6C4.2 3.5 3.2 4.5 3.2 5.9V14.4C3.2 15.8 4.2 16.8 5.6 16.8H14.1C15.5 16.8 16.5 15.8 16.5 14.4V9.5M8.2 11.8L8.6 9.4L15 3C15.5 2.5 16.3 2.5 16.8 3L17 3.2C17.5 3.7 17.5 4.5 17 5L10.6 11.4Z"},
  {"square.grid.2x2", "R3 3 5.6 5.6 1.6R11.4 3 5.6 5.6 1.6R3 11.4 5.6 5.6 1.6R11.4 11.4 5.6 5.6 1.6"},
  {"square.stack.3d.up", "R2.8 3 6 5.4 1.4R11.2 11.6 6 5.4 1.4M5.8 8.4V12C5.8 13.4 6.7 14.3 8.1 14.3H11.2"},
  {"stopwatch", "O10 11.2 6.3M10 8V11.2L12.2 12.7M8.2 2.2H11.8M10 2.2V4.9M15.2 4.7L16.2 5.7"},
  {"sun.max", "O10 10 3.3M10 2.4V4.2M10 15.8V17.6M2.4 10H4.2M15.8 10H17.6M4.6 4.6L5.9 5.9M14.1 14.1L15.4 15.4M4.6 15.4L5.9 14.1M14.1 5.9L15.4 4.6"},
  {"switch.2", "R2.6 3.2 14.8 5.8 2.9O14.3 6.1 0.8R2.6 11 14.8 5.8 2.9O5.7 13.9 0.8"},
  {"thermometer.medium", "M8 11V4.8C8 3.6 8.9 2.7 10 2.7C11.1 2.7 12 3.6 12 4.8V11C13 11.7 13.6 12.7 13.6 13.8C13.6 15.8 12 17.3 10 17.3C8 17.3 6.4 15.8 6.4 13.8C6.4 12.7 7 11.7 8 11ZM10 8V13.4O10 13.9 0.5"},
  {"timer", "O10 11 6.5M10 7.4V11M8 2.2H12"},
  {"trash", "M3.4 5.4H16.6M7.6 5.2V4.2C7.6 3.3 8.2 2.7 9.1 2.7H10.9C11.8 2.7 12.4 3.3 12.4 4.2V5.2M4.9 5.6L5.6 15.2C5.7 16.4 6.5 17.2 7.7 17.2H12.3C13.5 17.2 14.3 16.4 14.4 15.2L15.1 5.6M8.3 8.8V13.6M11.7 8.8V13.6"},
  {"video", "R2.2 5.2 10.6 9.6 2.4M12.8 8.8L17.4 6.2V13.8L12.8 11.2"},
  {"waveform", "M3 8.6V11.4M6.5 6V14M10 3.4V16.6M13.5 6V14M17 8.6V11.4"},
  {"wifi", "M2.6 7.8C6.7 4 13.3 4 17.4 7.8M5.2 10.8C7.9 8.3 12.1 8.3 14.8 10.8M7.7 13.5C9.1 12.3 10.9 12.3 12.3 13.5P10 16"},
  {"wind", "M3 7.4H11.4C13 7.4 14 6.5 14 5.3C14 4.2 13.2 3.4 12.1 3.4C11.2 3.4 10.5 3.9 10.2 4.6M3 10.6H15C16.3 10.6 17.2 11.4 17.2 12.6C17.2 13.7 16.4 14.5 15.3 14.5C14.4 14.5 13.7 14 13.4 13.3M3 13.8H9.4C10.6 13.8 11.4 14.5 11.4 15.5C11.4 16.4 10.7 17.1 9.8 17.1"},
  {"xmark", "M5 5L15 15M15 5L5 15"},
};
// clang-format on

/// Reads the letters and numbers of a drawing one after the other.
class Reader {
 public:
  explicit Reader(QLatin1StringView text) : at_(text.data()), end_(text.data() + text.size()) {}

  bool command(char& letter) {
    skipBlanks();
    if (at_ == end_) return false;
    letter = *at_++;
    return true;
  }

  template <std::size_t Count>
  std::array<double, Count> numbers() {
    std::array<double, Count> values{};
    for (double& value : values) {
      skipBlanks();
      at_ = std::from_chars(at_, end_, value).ptr;
    }
    return values;
  }

 private:
  void skipBlanks() {
    while (at_ != end_ && *at_ == ' ') ++at_;
  }

  const char* at_;
  const char* end_;
};

void addArc(QPainterPath& path, const std::array<double, 5>& arc) {
  const auto [x, y, radius, begin, sweep] = arc;
  const QRectF circle(x - radius, y - radius, radius * 2, radius * 2);
  path.arcMoveTo(circle, 90 - begin);
  path.arcTo(circle, 90 - begin, -sweep);
}

bool addCommand(QPainterPath& path, char letter, Reader& reader) {
  constexpr double dot = 0.01;  // A line too short to be seen, but with round ends.
  switch (letter) {
    case 'M': {
      const auto [x, y] = reader.numbers<2>();
      path.moveTo(x, y);
      return true;
    }
    case 'L': {
      const auto [x, y] = reader.numbers<2>();
      path.lineTo(x, y);
      return true;
    }
    case 'H': {
      const auto [x] = reader.numbers<1>();
      path.lineTo(x, path.currentPosition().y());
      return true;
    }
    case 'V': {
      const auto [y] = reader.numbers<1>();
      path.lineTo(path.currentPosition().x(), y);
      return true;
    }
    case 'C': {
      const auto [a, b, c, d, x, y] = reader.numbers<6>();
      path.cubicTo(a, b, c, d, x, y);
      return true;
    }
    case 'O': {
      const auto [x, y, r] = reader.numbers<3>();
      path.addEllipse(QPointF(x, y), r, r);
      return true;
    }
    case 'R': {
      const auto [x, y, w, h, r] = reader.numbers<5>();
      path.addRoundedRect(x, y, w, h, r, r);
      return true;
    }
    case 'P': {
      const auto [x, y] = reader.numbers<2>();
      path.moveTo(x, y);
      path.lineTo(x + dot, y);
      return true;
    }
    case 'A':
      addArc(path, reader.numbers<5>());
      return true;
    case 'Z':
      path.closeSubpath();
      return true;
    default:
      return false;
  }
}

}  // namespace

const QHash<QString, QLatin1StringView>& symbolTable() {
  static const QHash<QString, QLatin1StringView> table = [] {
    QHash<QString, QLatin1StringView> rows;
    for (const Drawing& drawing : kDrawings)
      rows.insert(QString::fromLatin1(drawing.name), QLatin1StringView(drawing.path));
    return rows;
  }();
  return table;
}

QPainterPath parseSymbol(QLatin1StringView text) {
  QPainterPath path;
  Reader reader(text);
  for (char letter = 0; reader.command(letter);)
    if (!addCommand(path, letter, reader)) break;
  return path;
}

}  // namespace tarnwick
