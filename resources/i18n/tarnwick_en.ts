<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- English words of this desktop for source texts that use another platform's names. Texts that need no other words are left out. -->
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>DockLayout</name>
    <message>
        <source>Sits at the bottom. Move to the edge and the macOS Dock takes over.</source>
        <translation>Sits at the bottom. Move to the edge and the system dock takes over.</translation>
    </message>
    <message>
        <source>Hidden until you reach the bottom edge, then slides up above the macOS Dock.</source>
        <translation>Hidden until you reach the bottom edge, then slides up above the system dock.</translation>
    </message>
    <message>
        <source>Hidden until you reach the top edge, then slides down below the menu bar.</source>
        <translation>Hidden until you reach the top edge, then slides down below the top bar.</translation>
    </message>
    <message>
        <source>Replace the macOS Dock</source>
        <translation>Replace System Dock</translation>
    </message>
    <message>
        <source>Hides the macOS Dock and stays fixed at the bottom in its place.</source>
        <translation>Hides the system dock and stays fixed at the bottom in its place.</translation>
    </message>
    <message>
        <source>Hides the macOS Dock. Appears at the bottom edge and hides when you move away.</source>
        <translation>Hides the system dock. Appears at the bottom edge and hides when you move away.</translation>
    </message>
</context>
<context>
    <name>NativeDockState</name>
    <message>
        <source>The saved macOS Dock recovery file is invalid. It has been preserved.</source>
        <translation>The saved recovery file of the system dock is invalid. It has been preserved.</translation>
    </message>
    <message>
        <source>macOS Dock preferences could not be saved. Recovery data was retained if restoration failed.</source>
        <translation>The system dock’s preferences could not be saved. Recovery data was retained if restoration failed.</translation>
    </message>
    <message>
        <source>The original macOS Dock settings could not be restored. The recovery file remains available for the next launch.</source>
        <translation>The original settings of the system dock could not be restored. The recovery file remains available for the next launch.</translation>
    </message>
</context>
<context>
    <name>Menu</name>
    <message>
        <source>Restore the macOS Dock</source>
        <translation>Restore the System Dock</translation>
    </message>
</context>
<context>
    <name>DockConfiguration</name>
    <message>
        <source>Credentials belong in Keychain, not configuration.</source>
        <translation>Credentials belong in the keyring, not in the configuration.</translation>
    </message>
</context>
<context>
    <name>SingleInstance</name>
    <message>
        <source>A copy of Tarnwick from before this one was built is still running and did not quit. Quit it from its menu bar icon, then open this one again.</source>
        <translation>A copy of Tarnwick from before this one was built is still running and did not quit. Quit it from its tray icon, then open this one again.</translation>
    </message>
</context>
<context>
    <name>Catalog</name>
    <message>
        <source>Finder Search</source>
        <translation>File Search</translation>
    </message>
    <message>
        <source>AirDrop</source>
        <translation>Nearby Share</translation>
    </message>
</context>
<context>
    <name>tarnwick::DockController</name>
    <message>
        <source>The macOS Dock settings have been restored.</source>
        <translation>The settings of the system dock have been restored.</translation>
    </message>
</context>
<context>
    <name>tarnwick::ProcessMonitor</name>
    <message>
        <source>Process metrics are unavailable on this Mac.</source>
        <translation>Process metrics are unavailable on this computer.</translation>
    </message>
    <message>
        <source>CPU uses one core as 100%. RAM is each process’s physical footprint.</source>
        <translation>CPU uses one core as 100%. RAM is what each process has for itself.</translation>
    </message>
</context>
<context>
    <name>tarnwick::Calendar</name>
    <message>
        <source>Enable Calendar access to see your events.</source>
        <translation>Your calendars are being read.</translation>
    </message>
    <message>
        <source>Enable Reminders access to see your reminders.</source>
        <translation>Your reminders are being read.</translation>
    </message>
</context>
<context>
    <name>CommandBar</name>
    <message>
        <source>↩ open · ⌘R reveal</source>
        <translation>↩ open · Ctrl+R reveal</translation>
    </message>
</context>
<context>
    <name>Panels</name>
    <message>
        <source>Keeps text, images, files, links and colours you copy, on this Mac only. Nothing is ever exported.</source>
        <translation>Keeps text, images, files, links and colours you copy, on this computer only. Nothing is ever exported.</translation>
    </message>
    <message>
        <source>Reveal in Finder</source>
        <translation>Show in Files</translation>
    </message>
    <message>
        <source>Live metadata from macOS. Availability depends on the current player and macOS version.</source>
        <translation>Live metadata from this desktop. Availability depends on the current player.</translation>
    </message>
    <message>
        <source>Uses local player Automation. macOS may ask you to allow access.</source>
        <translation>Speaks to the player on this computer. It must run, and let itself be controlled.</translation>
    </message>
    <message>
        <source>Reads and controls the selected YouTube tab. Requires browser Automation and JavaScript from Apple Events.</source>
        <translation>Reads and controls the YouTube video that a browser plays, as far as the browser lets itself be controlled.</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>Show menu bar icon</source>
        <translation>Show status icon</translation>
    </message>
    <message>
        <source>Open folders in Finder</source>
        <translation>Open folders in Files</translation>
    </message>
    <message>
        <source>Restore the macOS Dock</source>
        <translation>Restore the System Dock</translation>
    </message>
    <message>
        <source>Following a macOS Focus isn't available in this build: reading Focus needs either Full Disk Access, which is far more than a dock should ask for, or a Focus Filter, which needs build tooling this project doesn't use yet.</source>
        <translation>Following the desktop’s do-not-disturb mode isn’t available in this build.</translation>
    </message>
    <message>
        <source>When widgets don't fit</source>
        <translation>When widgets don’t fit</translation>
    </message>
    <message>
        <source>Don't show</source>
        <translation>Don’t show</translation>
    </message>
    <message numerus="yes">
        <source>%Ln widgets</source>
        <translation>
            <numerusform>%Ln widget</numerusform>
            <numerusform>%Ln widgets</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Services</name>
    <message>
        <source>Keychain access unavailable (%1).</source>
        <translation>The keyring is not available (%1).</translation>
    </message>
    <message>
        <source>Keychain could not save the credential (%1).</source>
        <translation>The keyring could not save the credential (%1).</translation>
    </message>
</context>
<context>
    <name>Library</name>
    <message>
        <source>Connected. Offline access is saved in Keychain.</source>
        <translation>Connected. Offline access is saved in the keyring.</translation>
    </message>
    <message>
        <source>Choose a Gemini CLI chats folder, or its parent temporary-data folder. Only token counts and dates are shown; recordings stay on your Mac.</source>
        <translation>Choose a Gemini CLI chats folder, or its parent temporary-data folder. Only token counts and dates are shown; recordings stay on this computer.</translation>
    </message>
</context>
<context>
    <name>WindowService</name>
    <message>
        <source>Enable Accessibility to list and switch individual windows.</source>
        <translation>This desktop does not tell apps which windows are open.</translation>
    </message>
    <message>
        <source>This app does not allow closing that window through Accessibility.</source>
        <translation>This app does not allow that window to be closed from here.</translation>
    </message>
</context>
<context>
    <name>ZoomMeetingService</name>
    <message>
        <source>Enable Accessibility to read Zoom’s meeting controls.</source>
        <translation>Turn on accessibility in the desktop’s settings to read Zoom’s meeting controls.</translation>
    </message>
</context>
<context>
    <name>MediaWords</name>
    <message>
        <source>System media is unavailable on this macOS version. Connect a player directly.</source>
        <translation>System media is unavailable on this desktop. Connect a player directly.</translation>
    </message>
</context>
<context>
    <name>AppAudioHardware</name>
    <message>
        <source>%1 failed (%2). Check System Audio Recording access and the selected output device.</source>
        <translation>%1 failed (%2). Check access to PipeWire and the selected output device.</translation>
    </message>
</context>
</TS>
