// The filter's panel in Shotcut. The rows come from controls.js, which the build writes.
import QtQuick 2.12
import QtQuick.Controls 2.12
import QtQuick.Layouts 1.12
import Shotcut.Controls 1.0 as Shotcut
import 'controls.js' as Flumo

Shotcut.KeyframableFilter {
    id: root

    readonly property var numbers: Flumo.controls.filter(function(row) { return row.kind === 'number' })

    /// Every row shows what the filter holds at this frame.
    signal refreshed()

    function refresh() {
        blockUpdate = true
        refreshed()
        blockUpdate = false
    }

    function setDefaults() {
        Flumo.texts.forEach(function(row) { filter.set(row.name, '') })
        Flumo.controls.forEach(function(row) { filter.set(row.name, row.normal) })
    }

    keyframableParameters: numbers.map(function(row) { return row.name })
    startValues: numbers.map(function(row) { return row.normal })
    middleValues: numbers.map(function(row) { return row.normal })
    endValues: numbers.map(function(row) { return row.normal })
    width: 350
    height: column.implicitHeight + 16

    Component.onCompleted: {
        if (filter.isNew)
            setDefaults()
        refresh()
    }

    ColumnLayout {
        id: column

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 8 }

        Repeater {
            model: Flumo.texts

            RowLayout {
                Label { text: modelData.title; Layout.preferredWidth: 150 }

                TextField {
                    id: field

                    Layout.fillWidth: true
                    selectByMouse: true
                    placeholderText: modelData.name === 'scene' ? 'a scene file' : '0:#000000,1:#ffffff'
                    onEditingFinished: filter.set(modelData.name, text)

                    Shotcut.HoverTip { text: modelData.tip }
                }

                Connections {
                    function onRefreshed() {
                        if (!field.activeFocus)
                            field.text = filter.get(modelData.name)
                    }
                    target: root
                }
            }
        }

        Repeater {
            model: Flumo.controls

            ColumnLayout {
                id: entry

                readonly property var row: modelData
                readonly property bool isNumber: row.kind === 'number'
                readonly property string above: index > 0 ? Flumo.controls[index - 1].heading : ''

                function fractionOf(value) { return (value - row.first) / (row.last - row.first) }

                function shown(fraction) { return row.first + fraction * (row.last - row.first) }

                function show(fraction) {
                    if (isNumber)
                        slider.value = shown(fraction)
                    else if (row.kind === 'choice')
                        choice.currentIndex = Math.round(fraction * (row.choices.length - 1))
                    else
                        box.checked = fraction >= 0.5
                }

                function reset() {
                    if (!isNumber)
                        filter.set(row.name, row.normal)
                    show(row.normal)
                }

                Label {
                    visible: entry.row.heading !== '' && entry.row.heading !== entry.above
                    text: entry.row.heading
                    font.bold: true
                    topPadding: 8
                }

                RowLayout {
                    Label {
                        text: entry.row.title
                        Layout.preferredWidth: 150
                        elide: Text.ElideRight

                        Shotcut.HoverTip { text: entry.row.tip }
                    }

                    Shotcut.SliderSpinner {
                        id: slider

                        visible: entry.isNumber
                        Layout.fillWidth: true
                        minimumValue: entry.isNumber ? entry.row.first : 0
                        maximumValue: entry.isNumber ? entry.row.end : 1
                        decimals: entry.isNumber ? entry.row.decimals : 0
                        stepSize: entry.isNumber && entry.row.decimals > 0 ? 0.1 : 1
                        suffix: entry.isNumber ? entry.row.suffix : ''
                        spinnerWidth: 110
                        onValueChanged: {
                            if (entry.isNumber)
                                root.updateFilter(entry.row.name, entry.fractionOf(value), keyframesButton, root.getPosition())
                        }
                    }

                    Shotcut.ComboBox {
                        id: choice

                        visible: entry.row.kind === 'choice'
                        Layout.fillWidth: true
                        model: visible ? entry.row.choices : []
                        onActivated: filter.set(entry.row.name, currentIndex / (count - 1))
                    }

                    CheckBox {
                        id: box

                        visible: entry.row.kind === 'switch'
                        Layout.fillWidth: true
                        onClicked: filter.set(entry.row.name, checked ? 1 : 0)
                    }

                    Shotcut.UndoButton { onClicked: entry.reset() }

                    Shotcut.KeyframesButton {
                        id: keyframesButton

                        visible: entry.isNumber
                        onToggled: {
                            slider.enabled = true
                            root.toggleKeyframes(checked, entry.row.name, entry.fractionOf(slider.value))
                        }
                    }
                }

                Connections {
                    function onRefreshed() {
                        // A project that another program has written may leave a parameter out.
                        var isSet = filter.get(entry.row.name) !== ''
                        entry.show(isSet ? filter.getDouble(entry.row.name, root.getPosition()) : entry.row.normal)
                        slider.enabled = root.isSimpleKeyframesActive()
                        keyframesButton.checked = entry.isNumber && filter.animateIn <= 0 && filter.animateOut <= 0 &&
                                filter.keyframeCount(entry.row.name) > 0
                    }
                    target: root
                }
            }
        }
    }

    Connections {
        function onChanged() { root.refresh() }
        function onPropertyChanged(name) { root.refresh() }
        target: filter
    }

    Connections {
        function onPositionChanged() { root.refresh() }
        target: producer
    }
}
